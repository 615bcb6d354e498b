// The replacements that are offered, by file.
#pragma once

#include "wren/search/Replacement.h"

#include <QAbstractItemModel>

#include <vector>

namespace wren {

// Each match, and each file for all of its matches, has a check mark; at first all are set. GUI thread.
class ReplaceModel : public QAbstractItemModel {
    Q_OBJECT
public:
    using QAbstractItemModel::QAbstractItemModel;

    void Clear();
    void Add(FileReplacements file);

    struct Chosen {
        FileReplacements file;
        std::vector<Replacement> edits; // in their order
    };
    std::vector<Chosen> AllChosen() const; // files with nothing chosen are left out
    size_t CountOfChosen() const;          // matches
    size_t Count() const { return count; }

    const FoundLine* LineAt(const QModelIndex& index) const;        // null for a file
    const FileReplacements& FileAt(const QModelIndex& index) const; // of the file or the match

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    void Chose(); // other matches than before

private:
    struct File {
        FileReplacements found;
        std::vector<bool> checked;
        size_t checkedCount = 0;
    };
    const File& At(const QModelIndex& index) const;
    Qt::CheckState StateOf(const QModelIndex& index) const;
    static void Check(File& file, size_t match, bool checked);

    std::vector<File> files;
    size_t count = 0; // matches
};

} // namespace wren
