#include "wren/desktop/files/FilesModel.h"

#include "wren/desktop/symbols/RowText.h"

#include <utility>

namespace wren {

using Kind = TreeEntry::Kind;

struct FilesModel::Node {
    TreeEntry entry;
    Node* parent = nullptr;
    size_t row = 0; // in the parent
    enum class State { Unknown, Wanted, Read } state = State::Unknown;
    std::vector<std::unique_ptr<Node>> inside = {};
};

FilesModel::FilesModel(FileIcons icons, QObject* parent)
    : QAbstractItemModel(parent), icons(std::move(icons)), root(std::make_unique<Node>())
{
    root->entry.kind = Kind::Directory;
}

FilesModel::~FilesModel() = default;

// ------------------------------------------------------------------------------------------------------- What is there

void FilesModel::Clear()
{
    beginResetModel();
    root->inside.clear();
    root->state = Node::State::Unknown;
    endResetModel();
    Want({});
}

void FilesModel::Remove(Node& directory, size_t row)
{
    beginRemoveRows(IndexOf(directory), static_cast<int>(row), static_cast<int>(row));
    directory.inside.erase(directory.inside.begin() + static_cast<std::ptrdiff_t>(row));
    for (size_t i = row; i < directory.inside.size(); ++i)
        directory.inside[i]->row = i;
    endRemoveRows();
}

void FilesModel::Insert(Node& directory, size_t row, TreeEntry entry)
{
    beginInsertRows(IndexOf(directory), static_cast<int>(row), static_cast<int>(row));
    auto node = std::make_unique<Node>(Node{std::move(entry), &directory});
    directory.inside.insert(directory.inside.begin() + static_cast<std::ptrdiff_t>(row), std::move(node));
    for (size_t i = row; i < directory.inside.size(); ++i)
        directory.inside[i]->row = i;
    endInsertRows();
}

// Both lists are in the same order.
void FilesModel::SetEntries(const std::string& path, std::vector<TreeEntry> entries)
{
    Node* directory = Find(path);
    if (directory == nullptr || directory->entry.kind != Kind::Directory)
        return;
    directory->state = Node::State::Read;
    if (directory->inside.empty() && !entries.empty()) {
        beginInsertRows(IndexOf(*directory), 0, static_cast<int>(entries.size()) - 1);
        directory->inside.reserve(entries.size());
        for (TreeEntry& entry : entries)
            directory->inside.push_back(
                std::make_unique<Node>(Node{std::move(entry), directory, directory->inside.size()}));
        endInsertRows();
        return;
    }
    size_t row = 0;
    for (TreeEntry& entry : entries) {
        while (row < directory->inside.size() && StandsBefore(directory->inside[row]->entry, entry))
            Remove(*directory, row);
        if (row == directory->inside.size() || StandsBefore(entry, directory->inside[row]->entry))
            Insert(*directory, row, std::move(entry));
        else
            directory->inside[row]->entry = std::move(entry); // a file may have become a link
        ++row;
    }
    while (row < directory->inside.size())
        Remove(*directory, row);
}

void FilesModel::ShowOnly(const std::vector<std::string>& files)
{
    beginResetModel();
    root->inside.clear();
    root->state = Node::State::Read;
    const auto within = [](Node& directory, std::string_view name, Kind kind) -> Node& {
        for (const auto& each : directory.inside)
            if (each->entry.name == name)
                return *each;
        auto node = std::make_unique<Node>(Node{{std::string(name), kind}, &directory, directory.inside.size()});
        node->state = Node::State::Read;
        return *directory.inside.emplace_back(std::move(node));
    };
    for (std::string_view file : files) {
        Node* directory = root.get();
        for (size_t slash = file.find('/'); slash != std::string_view::npos; slash = file.find('/')) {
            directory = &within(*directory, file.substr(0, slash), Kind::Directory);
            file.remove_prefix(slash + 1);
        }
        within(*directory, file, Kind::File);
    }
    endResetModel();
}

// ------------------------------------------------------------------------------------------------------ Paths and rows

FilesModel::Node* FilesModel::NodeOf(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : root.get();
}

QModelIndex FilesModel::IndexOf(const Node& node) const
{
    return node.parent == nullptr ? QModelIndex() : createIndex(static_cast<int>(node.row), 0, &node);
}

FilesModel::Node* FilesModel::Find(std::string_view path) const
{
    Node* node = root.get();
    while (!path.empty() && node != nullptr) {
        const std::string_view name = path.substr(0, path.find('/'));
        Node* found = nullptr;
        for (const auto& each : node->inside)
            if (each->entry.name == name)
                found = each.get();
        node = found;
        path.remove_prefix(std::min(path.size(), name.size() + 1));
    }
    return node;
}

std::string FilesModel::PathOf(const QModelIndex& index) const
{
    std::string path;
    for (const Node* node = NodeOf(index); node->parent != nullptr; node = node->parent)
        path = path.empty() ? node->entry.name : node->entry.name + "/" + path;
    return path;
}

TreeEntry::Kind FilesModel::KindOf(const QModelIndex& index) const
{
    return NodeOf(index)->entry.kind;
}

QModelIndex FilesModel::IndexOf(std::string_view path) const
{
    const Node* node = Find(path);
    return node == nullptr ? QModelIndex() : IndexOf(*node);
}

bool FilesModel::IsRead(const QModelIndex& directory) const
{
    return NodeOf(directory)->state == Node::State::Read;
}

void FilesModel::Want(const QModelIndex& index)
{
    Node* node = NodeOf(index);
    if (node->entry.kind != Kind::Directory || node->state != Node::State::Unknown)
        return;
    node->state = Node::State::Wanted;
    emit Wanted(PathOf(index));
}

std::vector<std::string> FilesModel::ReadDirectories() const
{
    std::vector<std::string> paths;
    std::vector<const Node*> left = {root.get()};
    while (!left.empty()) {
        const Node* node = left.back();
        left.pop_back();
        if (node->state != Node::State::Read)
            continue;
        paths.push_back(PathOf(IndexOf(*node)));
        for (const auto& each : node->inside)
            if (each->entry.kind == Kind::Directory)
                left.push_back(each.get());
    }
    return paths;
}

// ----------------------------------------------------------------------------------------------------------- For views

QModelIndex FilesModel::index(int row, int column, const QModelIndex& parent) const
{
    const Node* directory = NodeOf(parent);
    if (row < 0 || column != 0 || static_cast<size_t>(row) >= directory->inside.size())
        return {};
    return IndexOf(*directory->inside[static_cast<size_t>(row)]);
}

QModelIndex FilesModel::parent(const QModelIndex& child) const
{
    const Node* node = NodeOf(child);
    return node->parent == nullptr ? QModelIndex() : IndexOf(*node->parent);
}

int FilesModel::rowCount(const QModelIndex& parent) const
{
    return static_cast<int>(NodeOf(parent)->inside.size());
}

int FilesModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool FilesModel::hasChildren(const QModelIndex& parent) const
{
    const Node* node = NodeOf(parent);
    return node->entry.kind == Kind::Directory && (node->state != Node::State::Read || !node->inside.empty());
}

bool FilesModel::canFetchMore(const QModelIndex& parent) const
{
    const Node* node = NodeOf(parent);
    return node->entry.kind == Kind::Directory && node->state == Node::State::Unknown;
}

void FilesModel::fetchMore(const QModelIndex& parent)
{
    Want(parent);
}

QVariant FilesModel::data(const QModelIndex& index, int role) const
{
    const TreeEntry& entry = NodeOf(index)->entry;
    if (role == Qt::DisplayRole)
        return Shown(entry.name);
    if (role == Qt::DecorationRole)
        return entry.kind == Kind::Directory ? icons.directory : icons.file;
    if (role == Qt::ToolTipRole)
        return entry.kind == Kind::Link ? tr("%1 is a link to a directory or out of the project").arg(Shown(entry.name))
                                        : Shown(PathOf(index));
    return {};
}

Qt::ItemFlags FilesModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Kind kind = NodeOf(index)->entry.kind;
    if (kind == Kind::Link)
        return Qt::ItemNeverHasChildren;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return kind == Kind::File ? flags | Qt::ItemNeverHasChildren : flags;
}

} // namespace wren
