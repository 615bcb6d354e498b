#include "wren/desktop/symbols/MatchesModel.h"

#include "wren/desktop/symbols/KindIcon.h"
#include "wren/desktop/symbols/RowText.h"

#include <utility>

namespace wren {

namespace {

constexpr quintptr kFile = 0; // the internal number of files; a place has that of its file's row plus one

} // namespace

void MatchesModel::Clear()
{
    beginResetModel();
    files.clear();
    shown.clear();
    all = 0;
    endResetModel();
}

bool MatchesModel::Keeps(const File& file, const FoundPlace& place) const
{
    return letters.isEmpty() || Shown(place.source).contains(letters, Qt::CaseInsensitive) ||
           Shown(place.name).contains(letters, Qt::CaseInsensitive) ||
           Shown(file.shown).contains(letters, Qt::CaseInsensitive);
}

// Places come by file, so that only the last file can grow.
void MatchesModel::Add(std::vector<FoundPlace> places)
{
    for (FoundPlace& place : places) {
        ++all;
        if (files.empty() || files.back().shown != place.shown)
            files.push_back({place.shown, {}, {}});
        File& file = files.back();
        const bool keeps = Keeps(file, place);
        file.places.push_back(std::move(place));
        if (!keeps)
            continue;
        if (shown.empty() || shown.back() != files.size() - 1) {
            const int row = static_cast<int>(shown.size());
            beginInsertRows({}, row, row);
            shown.push_back(files.size() - 1);
            endInsertRows();
        }
        const int row = static_cast<int>(file.kept.size());
        beginInsertRows(index(static_cast<int>(shown.size()) - 1, 0, {}), row, row);
        file.kept.push_back(file.places.size() - 1);
        endInsertRows();
    }
}

void MatchesModel::Narrow(const QString& wanted)
{
    beginResetModel();
    letters = wanted;
    shown.clear();
    for (size_t number = 0; number < files.size(); ++number) {
        File& file = files[number];
        file.kept.clear();
        for (size_t place = 0; place < file.places.size(); ++place)
            if (Keeps(file, file.places[place]))
                file.kept.push_back(place);
        if (!file.kept.empty())
            shown.push_back(number);
    }
    endResetModel();
}

size_t MatchesModel::ShownPlaces() const
{
    size_t count = 0;
    for (const size_t file : shown)
        count += files[file].kept.size();
    return count;
}

const FoundPlace* MatchesModel::PlaceAt(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kFile)
        return nullptr;
    const File& file = files[shown[index.internalId() - 1]];
    return &file.places[file.kept[static_cast<size_t>(index.row())]];
}

std::string MatchesModel::FileAt(const QModelIndex& index) const
{
    return files[shown[static_cast<size_t>(index.row())]].shown;
}

size_t MatchesModel::CountAt(const QModelIndex& index) const
{
    return files[shown[static_cast<size_t>(index.row())]].kept.size();
}

QModelIndex MatchesModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kFile);
}

QModelIndex MatchesModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kFile)
        return {};
    return createIndex(static_cast<int>(index.internalId() - 1), 0, kFile);
}

int MatchesModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return static_cast<int>(shown.size());
    return parent.internalId() == kFile ? static_cast<int>(CountAt(parent)) : 0;
}

int MatchesModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant MatchesModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    const FoundPlace* place = PlaceAt(index);
    if (place == nullptr)
        return Shown(FileAt(index));
    const QString line = place->line == 0 ? QString() : QString::number(place->line) + ": ";
    if (role == Qt::DisplayRole)
        return line + Shown(place->source);
    return KindName(place->kind) + ' ' + Shown(place->name) + ' ' + line + Shown(place->source);
}

QModelIndex MatchesModel::Next(const QModelIndex& from, bool backwards) const
{
    const int count = rowCount({});
    if (count == 0)
        return {};
    const auto edge = [&](int file, bool last) {
        const QModelIndex parent = index(file, 0, {});
        return index(last ? rowCount(parent) - 1 : 0, 0, parent);
    };
    if (!from.isValid())
        return edge(backwards ? count - 1 : 0, backwards);
    if (PlaceAt(from) == nullptr) {
        const int file = from.row() - (backwards ? 1 : 0);
        return file < 0 ? QModelIndex() : edge(file, backwards);
    }
    const QModelIndex file = parent(from);
    const int row = from.row() + (backwards ? -1 : 1);
    if (row >= 0 && row < rowCount(file))
        return index(row, 0, file);
    const int other = file.row() + (backwards ? -1 : 1);
    return other < 0 || other >= count ? QModelIndex() : edge(other, backwards);
}

} // namespace wren
