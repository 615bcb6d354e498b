#include "wren/desktop/finder/ReplaceModel.h"

#include "wren/desktop/symbols/RowText.h"

#include <utility>

namespace wren {

namespace {

constexpr quintptr kFile = 0; // the internal number of files; a match has that of its file's row plus one

} // namespace

void ReplaceModel::Clear()
{
    beginResetModel();
    files.clear();
    count = 0;
    endResetModel();
}

void ReplaceModel::Add(FileReplacements found)
{
    const size_t matches = found.lines.size();
    const int row = static_cast<int>(files.size());
    beginInsertRows({}, row, row);
    files.push_back({std::move(found), std::vector<bool>(matches, true), matches});
    count += matches;
    endInsertRows();
}

std::vector<ReplaceModel::Chosen> ReplaceModel::AllChosen() const
{
    std::vector<Chosen> all;
    for (const File& file : files) {
        if (file.checkedCount == 0)
            continue;
        Chosen& chosen = all.emplace_back(Chosen{file.found, {}});
        chosen.edits.reserve(file.checkedCount);
        for (size_t match = 0; match < file.checked.size(); ++match)
            if (const FoundLine& line = file.found.lines[match]; file.checked[match])
                chosen.edits.push_back({line.offset, line.size, line.with});
    }
    return all;
}

size_t ReplaceModel::CountOfChosen() const
{
    size_t chosen = 0;
    for (const File& file : files)
        chosen += file.checkedCount;
    return chosen;
}

const ReplaceModel::File& ReplaceModel::At(const QModelIndex& index) const
{
    return files[index.internalId() == kFile ? static_cast<size_t>(index.row()) : index.internalId() - 1];
}

const FoundLine* ReplaceModel::LineAt(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kFile)
        return nullptr;
    return &At(index).found.lines[static_cast<size_t>(index.row())];
}

const FileReplacements& ReplaceModel::FileAt(const QModelIndex& index) const
{
    return At(index).found;
}

QModelIndex ReplaceModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kFile);
}

QModelIndex ReplaceModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kFile)
        return {};
    return createIndex(static_cast<int>(index.internalId() - 1), 0, kFile);
}

int ReplaceModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return static_cast<int>(files.size());
    return parent.internalId() == kFile ? static_cast<int>(At(parent).checked.size()) : 0;
}

int ReplaceModel::columnCount(const QModelIndex&) const
{
    return 1;
}

Qt::ItemFlags ReplaceModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable : Qt::NoItemFlags;
}

Qt::CheckState ReplaceModel::StateOf(const QModelIndex& index) const
{
    const File& file = At(index);
    if (index.internalId() != kFile)
        return file.checked[static_cast<size_t>(index.row())] ? Qt::Checked : Qt::Unchecked;
    if (file.checkedCount == 0)
        return Qt::Unchecked;
    return file.checkedCount == file.checked.size() ? Qt::Checked : Qt::PartiallyChecked;
}

QVariant ReplaceModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::CheckStateRole)
        return StateOf(index);
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    const FoundLine* line = LineAt(index);
    if (line == nullptr)
        return Shown(FileAt(index).shown);
    return tr("%1: %2 becomes %3").arg(line->line).arg(Shown(line->source), Shown(SourceAfter(*line)));
}

void ReplaceModel::Check(File& file, size_t match, bool checked)
{
    if (file.checked[match] == checked)
        return;
    file.checked[match] = checked;
    file.checkedCount = checked ? file.checkedCount + 1 : file.checkedCount - 1;
}

bool ReplaceModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    const bool isFile = index.internalId() == kFile;
    const QModelIndex top = isFile ? index : parent(index);
    File& file = files[static_cast<size_t>(top.row())];
    const bool checked = value.toInt() != Qt::Unchecked;
    const auto first = static_cast<size_t>(isFile ? 0 : index.row());
    for (size_t match = first; match < (isFile ? file.checked.size() : first + 1); ++match)
        Check(file, match, checked);
    emit dataChanged(top, top, {Qt::CheckStateRole});
    emit dataChanged(this->index(0, 0, top), this->index(rowCount(top) - 1, 0, top), {Qt::CheckStateRole});
    emit Chose();
    return true;
}

} // namespace wren
