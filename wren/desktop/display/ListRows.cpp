#include "wren/desktop/display/ListRows.h"

#include <cassert>
#include <utility>

namespace wren {

void ListRows::Insert(long index, const QString& text)
{
    assert(index >= 0 && index <= static_cast<long>(told.size()));
    told.insert(told.begin() + index, text);
    changed = true;
}

void ListRows::Remove(long index)
{
    assert(index >= 0 && index < static_cast<long>(told.size()));
    told.erase(told.begin() + index);
    changed = true;
}

void ListRows::Change(long index, const QString& text)
{
    assert(index >= 0 && index < static_cast<long>(told.size()));
    told[index] = text;
    changed = true;
}

bool ListRows::Publish()
{
    if (!std::exchange(changed, false))
        return false;
    beginResetModel();
    shown = told;
    endResetModel();
    return true;
}

int ListRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(shown.size());
}

QVariant ListRows::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || index.row() < 0 || index.row() >= rowCount())
        return {};
    return shown[index.row()];
}

} // namespace wren
