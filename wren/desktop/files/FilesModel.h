// A tree of files, a directory at a time.
#pragma once

#include "wren/files/ProjectTree.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct FileIcons {
    QIcon directory;
    QIcon file;
};

// Paths are relative to the root, with "" for the root itself. Names may be any bytes. GUI thread.
class FilesModel : public QAbstractItemModel {
    Q_OBJECT
public:
    explicit FilesModel(FileIcons icons, QObject* parent = nullptr);
    ~FilesModel() override;

    void Clear(); // nothing is known; the root is wanted
    // What is in a directory now. Rows that stay keep what is below them.
    void SetEntries(const std::string& directory, std::vector<TreeEntry> entries);
    void ShowOnly(const std::vector<std::string>& files); // these, and their directories; nothing is wanted

    std::string PathOf(const QModelIndex& index) const;
    TreeEntry::Kind KindOf(const QModelIndex& index) const;
    QModelIndex IndexOf(std::string_view path) const; // invalid for the root, and while it is not known
    bool IsRead(const QModelIndex& directory) const;
    void Want(const QModelIndex& directory);          // unless it is read, or wanted already
    std::vector<std::string> ReadDirectories() const; // those that are known

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    void Wanted(const std::string& directory); // SetEntries() answers

private:
    struct Node;

    Node* NodeOf(const QModelIndex& index) const;
    Node* Find(std::string_view path) const; // null while it is not known
    QModelIndex IndexOf(const Node& node) const;
    void Remove(Node& directory, size_t row);
    void Insert(Node& directory, size_t row, TreeEntry entry);

    const FileIcons icons;
    std::unique_ptr<Node> root;
};

} // namespace wren
