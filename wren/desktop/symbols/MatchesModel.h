// Places that answer a question, by file.
#pragma once

#include "wren/desktop/symbols/FoundPlace.h"

#include <QAbstractItemModel>

#include <string>
#include <vector>

namespace wren {

// Files in the order in which they came, each with its places. Only those that contain the filter's letters, in any
// case, are there: in the source line, the name or the path. GUI thread.
class MatchesModel : public QAbstractItemModel {
    Q_OBJECT
public:
    using QAbstractItemModel::QAbstractItemModel;

    void Clear();
    void Add(std::vector<FoundPlace> places); // those of a file stand together
    void Narrow(const QString& letters);

    size_t All() const { return all; }
    size_t ShownPlaces() const;                                // with the filter
    const FoundPlace* PlaceAt(const QModelIndex& index) const; // null for a file
    std::string FileAt(const QModelIndex& index) const;        // for people
    size_t CountAt(const QModelIndex& index) const;            // of a file's places

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // The place after or before one, across files; the first or last one for an index that is not valid. An index that
    // is not valid when there is no other.
    QModelIndex Next(const QModelIndex& from, bool backwards) const;

private:
    struct File {
        std::string shown;
        std::vector<FoundPlace> places;
        std::vector<size_t> kept; // by the filter
    };
    bool Keeps(const File& file, const FoundPlace& place) const;

    std::vector<File> files;   // all
    std::vector<size_t> shown; // that have places which the filter keeps
    QString letters;
    size_t all = 0;
};

} // namespace wren
