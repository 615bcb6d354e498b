#include "wren/desktop/display/ListPeer.h"

#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/display/UserPosts.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QStyledItemDelegate>

#include <cassert>
#include <utility>
#include <vector>

namespace wren {

// The entries of a list. Changes are gathered, and Publish() shows them all at once: a list that is emptied and
// refilled at every key is laid out once, not entry by entry.
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

namespace {

// Lines as high as the framework takes them to be, so that its windows hold whole ones. Lines are never wider than the
// list, which would scroll sideways.
class EvenLines : public QStyledItemDelegate {
public:
    EvenLines(int height, QObject* parent) : QStyledItemDelegate(parent), height(height) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {1, height}; }

private:
    const int height;
};

QColor ReadableOn(const QColor& ground)
{
    return qGray(ground.rgb()) > 127 ? Qt::black : Qt::white;
}

} // namespace

ListPeer::ListPeer(vetch::HandlerToken list, const ModifierKeys& keys, int lineHeight, QWidget* parent)
    : QListView(parent), list(list), keys(keys), rows(new ListRows)
{
    rows->setParent(this);
    setModel(rows);
    SetUp(lineHeight);
}

void ListPeer::SetUp(int lineHeight)
{
    setItemDelegate(new EvenLines(lineHeight, this));
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void ListPeer::TakeKey(const QKeyEvent& event)
{
    if (const auto key = StrokeOf(event, keys))
        PostKeyDown(list, *key);
}

void ListPeer::AddItem(long index, const std::string& text)
{
    rows->Insert(index, ShownText(text));
}

void ListPeer::RemoveItem(long index)
{
    rows->Remove(index);
}

void ListPeer::ChangeItem(long index, const std::string& text)
{
    rows->Change(index, ShownText(text));
}

void ListPeer::SelectItem(long index)
{
    selected = index;
    moved = true;
}

void ListPeer::SetSelectionColour(rgb_color colour)
{
    const QColor ground(colour.red, colour.green, colour.blue);
    QPalette changed; // of which only these two count: the rest stays the desktop's
    changed.setColor(QPalette::Highlight, ground);
    changed.setColor(QPalette::HighlightedText, ReadableOn(ground));
    setPalette(changed);
}

void ListPeer::Publish()
{
    const bool refilled = rows->Publish();
    if (!std::exchange(moved, false) && !refilled)
        return;
    const QModelIndex index = selected < 0 ? QModelIndex() : rows->index(static_cast<int>(selected));
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    if (index.isValid())
        scrollTo(index);
    else if (refilled)
        scrollToTop();
}

void ListPeer::mousePressEvent(QMouseEvent* event)
{
    TakeClick(*event, 1);
}

void ListPeer::mouseDoubleClickEvent(QMouseEvent* event)
{
    TakeClick(*event, 2);
}

void ListPeer::mouseMoveEvent(QMouseEvent*) {}

void ListPeer::mouseReleaseEvent(QMouseEvent*) {}

void ListPeer::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)
        event->ignore(); // the window's
    else
        TakeKey(*event);
}

void ListPeer::TakeClick(const QMouseEvent& event, int clicks)
{
    const QModelIndex index = indexAt(event.position().toPoint());
    if (event.button() == Qt::LeftButton && index.isValid())
        PostMouseDown(list, index.row(), clicks);
}

} // namespace wren
