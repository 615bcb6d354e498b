#include "wren/desktop/symbols/SymbolList.h"

#include "wren/desktop/symbols/KindIcon.h"
#include "wren/desktop/symbols/ParentScopes.h"
#include "wren/desktop/symbols/RowText.h"

#include <QAbstractListModel>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace wren {

class SymbolModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void Set(std::vector<PaletteItem> given)
    {
        beginResetModel();
        items = std::move(given);
        const auto hasKind = [](const PaletteItem& item) { return item.kind != tagging::SymbolKind::None; };
        hasKinds = std::ranges::any_of(items, hasKind);
        belowScopes = BelowTheirScopes(items);
        endResetModel();
    }
    const std::vector<PaletteItem>& Items() const { return items; }
    bool IsBelowItsScope(int row) const { return belowScopes[static_cast<size_t>(row)]; }
    bool HasKinds() const { return hasKinds; } // else there is nothing that icons could tell apart

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(items.size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const PaletteItem& item = items[static_cast<size_t>(index.row())];
        if (role == Qt::DisplayRole)
            return Shown(item.name);
        if (role == Qt::AccessibleTextRole)
            return SpokenKind(item) + Shown(item.name) + ' ' + Shown(item.detail) + ' ' + Shown(item.where);
        if (role == Qt::ToolTipRole)
            return Shown(item.path);
        return {};
    }

private:
    // What is neither a symbol nor a file, such as a command, has a name only.
    static QString SpokenKind(const PaletteItem& item)
    {
        return item.kind == tagging::SymbolKind::None && item.path.empty() ? QString() : KindName(item.kind) + ' ';
    }

    std::vector<PaletteItem> items;
    std::vector<bool> belowScopes;
    bool hasKinds = false;
};

namespace {

constexpr int kPadding = 6; // pixels, around and between the parts of a row
constexpr int kStep = 16;   // pixels, for each level of an outline

// A name with the typed letters marked, what it belongs to, and at the right where it is.
class RowPainter : public QStyledItemDelegate {
public:
    RowPainter(const SymbolModel& model, QObject* parent) : QStyledItemDelegate(parent), model(model) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        return {100, option.fontMetrics.height() + kPadding};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const PaletteItem& item = model.Items()[static_cast<size_t>(index.row())];
        const bool isMarked = option.state.testFlag(QStyle::State_Selected);
        const QPalette& colours = option.palette;
        const QColor paper = colours.color(isMarked ? QPalette::Highlight : QPalette::Base);
        const QColor ink = colours.color(isMarked ? QPalette::HighlightedText : QPalette::Text);
        painter->fillRect(option.rect, paper);
        QRect free = option.rect.adjusted(kPadding + item.depth * kStep, 0, -kPadding, 0);
        if (model.HasKinds())
            DrawKind(*painter, item, option.fontMetrics.height(), free);
        DrawPlace(*painter, option, item, Faint(ink, paper), free);
        QTextCharFormat typed;
        typed.setFontWeight(QFont::Bold);
        typed.setFontUnderline(true);
        const int width = DrawLine(*painter, free, Shown(item.name), option.font, ink,
                                   wren::Marked(item.name, item.positions, typed));
        free.setLeft(free.left() + width + 2 * kPadding);
        if (!model.IsBelowItsScope(index.row()))
            DrawLine(*painter, free, Shown(item.detail), option.font, Faint(ink, paper));
    }

private:
    static void DrawKind(QPainter& painter, const PaletteItem& item, int side, QRect& free)
    {
        KindIcon(item.kind).paint(&painter, QRect(free.left(), free.top() + (free.height() - side) / 2, side, side));
        free.setLeft(free.left() + side + kPadding);
    }

    // Takes its part off the right of what is free: half of the row at most, the end of a long path.
    static void DrawPlace(QPainter& painter, const QStyleOptionViewItem& option, const PaletteItem& item,
                          const QColor& ink, QRect& free)
    {
        const QString place = option.fontMetrics.elidedText(Shown(item.where), Qt::ElideLeft, free.width() / 2);
        const int width = option.fontMetrics.horizontalAdvance(place) + 1;
        QRect where = free;
        where.setLeft(free.right() - width);
        DrawLine(painter, where, place, option.font, ink);
        free.setRight(where.left() - kPadding);
    }

    const SymbolModel& model;
};

} // namespace

SymbolList::SymbolList(QWidget* parent) : QListView(parent), model(new SymbolModel(this))
{
    setModel(model);
    setItemDelegate(new RowPainter(*model, this));
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void SymbolList::Show(std::vector<PaletteItem> items)
{
    model->Set(std::move(items));
}

const std::vector<PaletteItem>& SymbolList::Items() const
{
    return model->Items();
}

int SymbolList::Count() const
{
    return model->rowCount({});
}

int SymbolList::Marked() const
{
    return currentIndex().row();
}

void SymbolList::Mark(int row)
{
    setCurrentIndex(model->index(row));
}

void SymbolList::Move(int rows)
{
    const int last = Count() - 1;
    if (last < 0)
        return;
    const int wanted = Marked() + rows;
    const bool isStep = rows == 1 || rows == -1;
    Mark(isStep && wanted < 0 ? last : isStep && wanted > last ? 0 : std::clamp(wanted, 0, last));
}

int SymbolList::RowHeight() const
{
    return fontMetrics().height() + kPadding;
}

} // namespace wren
