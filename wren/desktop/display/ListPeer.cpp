#include "wren/desktop/display/ListPeer.h"

#include "wren/desktop/display/ShortPaths.h"
#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/display/UserPosts.h"

#include <QAbstractListModel>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QStyledItemDelegate>

#include <algorithm>
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
    void ShortenPaths() { shortens = true; }
    const std::vector<QString>& Told() const { return told; }
    const std::vector<QString>& Shown() const { return shown; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<QString> told;
    std::vector<QString> whole; // of those that are shown
    std::vector<QString> shown;
    bool shortens = false;
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
    whole = told;
    shown = shortens ? WithShortPaths(told) : told;
    endResetModel();
    return true;
}

int ListRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(shown.size());
}

QVariant ListRows::data(const QModelIndex& index, int role) const
{
    if (index.row() < 0 || index.row() >= rowCount())
        return {};
    if (role == Qt::ToolTipRole)
        return PlainTip(whole[index.row()]);
    if (role == ListPeer::kPainted)
        return shown[index.row()];
    return role == Qt::DisplayRole ? QVariant(whole[index.row()]) : QVariant(); // also for screen readers
}

namespace {

constexpr int kRowMargin = 8; // pixels, at both ends of a row

// Lines as high as the framework takes them to be, so that its windows hold whole ones. Lines are never wider than the
// list, which would scroll sideways.
class EvenLines : public QStyledItemDelegate {
public:
    EvenLines(int height, QObject* parent) : QStyledItemDelegate(parent), height(height) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {1, height}; }

    // A row that is seen whole needs no tool tip.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        const QString row = index.data(ListPeer::kPainted).toString();
        const bool isWhole = row == index.data().toString() &&
                             view->fontMetrics().horizontalAdvance(row) + kRowMargin < option.rect.width();
        return !isWhole && QStyledItemDelegate::helpEvent(event, view, option, index);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text = index.data(ListPeer::kPainted).toString();
    }

private:
    const int height;
};

QColor ReadableOn(const QColor& ground)
{
    return qGray(ground.rgb()) > 127 ? Qt::black : Qt::white;
}

} // namespace

ListPeer::ListPeer(vetch::HandlerToken list, const ModifierKeys& keys, int lineHeight, QWidget* parent)
    : QListView(parent), list(list), keys(keys), lineHeight(lineHeight), rows(new ListRows)
{
    rows->setParent(this);
    setModel(rows);
    SetUp();
}

void ListPeer::SetUp()
{
    setItemDelegate(new EvenLines(lineHeight, this));
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setBackgroundRole(QPalette::Base); // what is left below the last row looks as the rows do
    setAutoFillBackground(true);
}

void ListPeer::ShortenPaths()
{
    rows->ShortenPaths();
}

int ListPeer::WidthSaved() const
{
    const auto widest = [this](const std::vector<QString>& texts) {
        const auto longest = std::ranges::max_element(texts, {}, &QString::size);
        return longest == texts.end() ? 0 : fontMetrics().horizontalAdvance(*longest);
    };
    return std::max(0, widest(rows->Told()) - widest(rows->Shown()));
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

// Only whole rows are seen: the window is some pixels higher than its rows, and the user makes it any height.
void ListPeer::resizeEvent(QResizeEvent* event)
{
    const int rest = height() > lineHeight ? height() % lineHeight : 0;
    if (viewportMargins().bottom() != rest)
        setViewportMargins(0, 0, 0, rest);
    QListView::resizeEvent(event);
}

void ListPeer::TakeClick(const QMouseEvent& event, int clicks)
{
    const QModelIndex index = indexAt(event.position().toPoint());
    if (event.button() == Qt::LeftButton && index.isValid())
        PostMouseDown(list, index.row(), clicks);
}

} // namespace wren
