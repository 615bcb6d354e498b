// The entries of a list, as its view reads them.
#pragma once

#include <QAbstractListModel>
#include <QString>

#include <vector>

namespace wren {

// Changes are gathered, and shown all at once by Publish(): a list that is emptied and filled anew at every key is laid
// out once, not entry by entry.
class ListRows : public QAbstractListModel {
public:
    void Insert(long index, const QString& text);
    void Remove(long index);
    void Change(long index, const QString& text);
    bool Publish(); // false when nothing has changed

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<QString> told;
    std::vector<QString> shown;
    bool changed = false;
};

} // namespace wren
