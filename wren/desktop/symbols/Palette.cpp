#include "wren/desktop/symbols/Palette.h"

#include "wren/desktop/symbols/KindIcon.h"
#include "wren/desktop/symbols/RowText.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wren {

class PaletteModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void Set(std::vector<PaletteItem> given)
    {
        beginResetModel();
        items = std::move(given);
        endResetModel();
    }
    const std::vector<PaletteItem>& Items() const { return items; }

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
            return KindName(item.kind) + ' ' + Shown(item.name) + ' ' + Shown(item.detail) + ' ' + Shown(item.where);
        if (role == Qt::ToolTipRole)
            return Shown(item.path);
        return {};
    }

private:
    std::vector<PaletteItem> items;
};

namespace {

constexpr int kRows = 14;   // seen at once
constexpr int kWidth = 760; // pixels, at most
constexpr int kPadding = 6; // pixels, around and between the parts of a row
constexpr int kStep = 16;   // pixels, for each level of an outline

// "name:12" is a name and a line; "Outer::name" is a name.
std::pair<QString, long> Split(const QString& typed)
{
    const qsizetype colon = typed.lastIndexOf(':');
    const bool isScope = colon > 0 && typed[colon - 1] == ':';
    bool isNumber = false;
    const long line = typed.mid(colon + 1).toLong(&isNumber);
    if (colon < 0 || isScope || !(isNumber || colon + 1 == typed.size()))
        return {typed.trimmed(), 0};
    return {typed.left(colon).trimmed(), std::max(line, 0L)};
}

// A name with the typed letters marked, what it belongs to, and at the right where it is.
class RowPainter : public QStyledItemDelegate {
public:
    RowPainter(const PaletteModel& model, QObject* parent) : QStyledItemDelegate(parent), model(model) {}

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
        const int side = option.fontMetrics.height();
        KindIcon(item.kind).paint(painter, QRect(free.left(), free.top() + (free.height() - side) / 2, side, side));
        free.setLeft(free.left() + side + kPadding);
        DrawPlace(*painter, option, item, Faint(ink, paper), free);
        QTextCharFormat typed;
        typed.setFontWeight(QFont::Bold);
        typed.setFontUnderline(true);
        const int width = DrawLine(*painter, free, Shown(item.name), option.font, ink,
                                   wren::Marked(item.name, item.positions, typed));
        free.setLeft(free.left() + width + 2 * kPadding);
        DrawLine(*painter, free, Shown(item.detail), option.font, Faint(ink, paper));
    }

private:
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

    const PaletteModel& model;
};

} // namespace

Palette::Palette(QWidget* window)
    : QFrame(window), field(new QLineEdit), message(new QLabel), list(new QListView), model(new PaletteModel(this))
{
    setObjectName("palette");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    column->setSpacing(kPadding);
    column->addWidget(field);
    column->addWidget(message);
    column->addWidget(list);
    field->setObjectName("paletteField");
    field->setClearButtonEnabled(true);
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    list->setModel(model);
    list->setItemDelegate(new RowPainter(*model, list));
    list->setUniformItemSizes(true);
    list->setFocusPolicy(Qt::NoFocus);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setFrameShape(QFrame::NoFrame);
    connect(field, &QLineEdit::textEdited, this, &Palette::Typed);
    connect(field, &QLineEdit::textChanged, this, [this] {
        if (field->text().isEmpty() && isVisible()) // the button that clears
            Typed();
    });
    connect(list, &QListView::clicked, this, [this](const QModelIndex& index) {
        Mark(index.row());
        Choose();
    });
    field->installEventFilter(this);
    window->installEventFilter(this);
    hide();
}

void Palette::Open(PaletteUse wanted)
{
    use = std::move(wanted);
    field->blockSignals(true);
    field->clear();
    field->blockSignals(false);
    field->setPlaceholderText(use.title);
    field->setAccessibleName(use.title);
    list->setAccessibleName(use.title);
    model->Set({});
    message->hide();
    Fit();
    show();
    raise();
    field->setFocus();
    Typed();
}

void Palette::Show(PaletteAnswer answer)
{
    if (!isVisible())
        return;
    if (answer.items.empty())
        return Tell(Letters().isEmpty() ? "" : tr("Nothing is called \u201c%1\u201d.").arg(Letters()));
    message->setText(tr("The first %1; more letters find the others").arg(answer.items.size()));
    message->setVisible(answer.more);
    model->Set(std::move(answer.items));
    Mark(0);
    Fit();
}

void Palette::Tell(const QString& text)
{
    model->Set({});
    message->setText(text);
    message->setVisible(!text.isEmpty());
    Fit();
}

void Palette::Close()
{
    if (!isVisible())
        return;
    hide();
    emit Closed();
}

void Palette::AskAgain()
{
    if (isVisible())
        Typed();
}

QString Palette::Letters() const
{
    return Split(field->text()).first;
}

const std::vector<PaletteItem>& Palette::Items() const
{
    return model->Items();
}

int Palette::Marked() const
{
    return list->currentIndex().row();
}

void Palette::Typed()
{
    if (!Letters().isEmpty() || use.listsWithoutLetters)
        use.ask(Letters());
    else
        Show({});
}

void Palette::Choose()
{
    const int row = Marked();
    if (row < 0)
        return;
    const PaletteItem item = model->Items()[static_cast<size_t>(row)];
    const long line = Split(field->text()).second;
    const auto choose = use.choose;
    Close();
    choose(item, line);
}

void Palette::Move(int rows)
{
    const int last = model->rowCount({}) - 1;
    if (last < 0)
        return;
    const int wanted = Marked() + rows;
    const bool isStep = rows == 1 || rows == -1; // which goes round at the ends
    Mark(isStep && wanted < 0 ? last : isStep && wanted > last ? 0 : std::clamp(wanted, 0, last));
}

void Palette::Mark(int row)
{
    list->setCurrentIndex(model->index(row));
    if (use.preview && row >= 0 && row < model->rowCount({}))
        use.preview(model->Items()[static_cast<size_t>(row)]);
}

bool Palette::KeyPressed(int key)
{
    switch (key) {
    case Qt::Key_Escape: {
        const auto leave = use.leave;
        Close();
        if (leave)
            leave();
        return true;
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose();
        return true;
    case Qt::Key_Up:
        Move(-1);
        return true;
    case Qt::Key_Down:
        Move(1);
        return true;
    case Qt::Key_PageUp:
        Move(-kRows);
        return true;
    case Qt::Key_PageDown:
        Move(kRows);
        return true;
    default:
        return false;
    }
}

bool Palette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize && isVisible())
        Fit();
    if (watched != field)
        return false;
    if (event->type() == QEvent::KeyPress)
        return KeyPressed(static_cast<const QKeyEvent*>(event)->key());
    if (event->type() == QEvent::FocusOut &&
        static_cast<const QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason && isVisible())
        hide(); // the keyboard is somewhere else already
    return false;
}

void Palette::Fit()
{
    const QRect area = parentWidget()->rect();
    const int rows = std::min(model->rowCount({}), kRows);
    const int row = QFontMetrics(list->font()).height() + kPadding;
    list->setFixedHeight(rows * row);
    list->setVisible(rows > 0);
    const int width = std::min(kWidth, area.width() * 9 / 10);
    layout()->activate();
    resize(width, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height());
    move((area.width() - width) / 2, area.height() / 12);
}

} // namespace wren
