#include "wren/desktop/symbols/MatchesPanel.h"

#include "wren/desktop/symbols/KindIcon.h"
#include "wren/desktop/symbols/ListKeys.h"
#include "wren/desktop/symbols/MatchesModel.h"
#include "wren/desktop/symbols/RowText.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr int kMargin = 4; // pixels
constexpr int kPage = 10;  // rows
constexpr int kDigits = 6; // room for a line's number

// A file with the count of its places; a place with its line's number and text, the name marked.
class PlacePainter : public QStyledItemDelegate {
public:
    PlacePainter(const MatchesModel& model, QObject* parent)
        : QStyledItemDelegate(parent), model(model), code(QFontDatabase::systemFont(QFontDatabase::FixedFont))
    {
    }

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {100, QFontMetrics(code).height() + kMargin};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool isMarked = option.state.testFlag(QStyle::State_Selected);
        const QColor paper = option.palette.color(isMarked ? QPalette::Highlight : QPalette::Base);
        const QColor ink = option.palette.color(isMarked ? QPalette::HighlightedText : QPalette::Text);
        painter->fillRect(option.rect, paper);
        QRect free = option.rect.adjusted(kMargin, 0, -kMargin, 0);
        if (const FoundPlace* place = model.PlaceAt(index))
            DrawPlace(*painter, *place, free, ink, Faint(ink, paper));
        else
            DrawFile(*painter, index, option.font, free, ink, Faint(ink, paper));
    }

private:
    void DrawFile(QPainter& painter, const QModelIndex& index, QFont font, QRect free, const QColor& ink,
                  const QColor& faint) const
    {
        font.setBold(true);
        const int width = DrawLine(painter, free, Shown(model.FileAt(index)), font, ink);
        free.setLeft(free.left() + width + 2 * kMargin);
        font.setBold(false);
        DrawLine(painter, free, QString::number(model.CountAt(index)), font, faint);
    }

    void DrawPlace(QPainter& painter, const FoundPlace& place, QRect free, const QColor& ink, const QColor& faint) const
    {
        const QFontMetrics metrics(code);
        if (place.kind != tagging::SymbolKind::None) {
            const int side = metrics.height();
            KindIcon(place.kind).paint(&painter, free.left(), free.top() + (free.height() - side) / 2, side, side);
            free.setLeft(free.left() + side + kMargin);
        }
        const int numbers = metrics.horizontalAdvance('0') * kDigits;
        if (place.line > 0)
            DrawLine(painter, free, QString::number(place.line), code, faint);
        free.setLeft(free.left() + numbers);
        QTextCharFormat name;
        name.setFontWeight(QFont::Bold);
        name.setFontUnderline(true);
        const auto before = static_cast<int>(Shown(std::string_view(place.source).substr(0, place.nameStart)).size());
        DrawLine(painter, free, Shown(place.source), code, ink, {{before, static_cast<int>(place.nameSize), name}});
    }

    const MatchesModel& model;
    const QFont code;
};

bool IsAt(const FoundPlace& place, const CaretPlace& asked)
{
    return place.line == asked.line && place.column <= asked.column &&
           asked.column <= place.column + static_cast<long>(place.nameSize) && place.path == asked.path;
}

} // namespace

MatchesPanel::MatchesPanel(QWidget* parent)
    : QDockWidget(tr("Matches"), parent), model(new MatchesModel(this)), title(new QLabel), filter(new QLineEdit),
      stop(new QToolButton), tree(new QTreeView)
{
    setObjectName("matches");
    setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kMargin, kMargin, kMargin, 0);
    column->setSpacing(kMargin);
    auto* row = new QHBoxLayout;
    row->addWidget(title, 1);
    row->addWidget(stop);
    row->addWidget(filter);
    column->addLayout(row);
    column->addWidget(tree, 1);
    setWidget(content);
    title->setTextFormat(Qt::PlainText);
    title->setAccessibleName(tr("What is listed"));
    stop->setText(tr("Stop"));
    stop->setFocusPolicy(Qt::NoFocus);
    filter->setPlaceholderText(tr("Narrow the list"));
    filter->setAccessibleName(tr("Narrow the list of matches"));
    filter->setClearButtonEnabled(true);
    tree->setAccessibleName(tr("Matches"));
    tree->setModel(model);
    tree->setItemDelegate(new PlacePainter(*model, tree));
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true);
    tree->setFrameShape(QFrame::NoFrame);
    tree->setItemsExpandable(true);
    tree->setExpandsOnDoubleClick(false);
    for (QWidget* each : {static_cast<QWidget*>(filter), static_cast<QWidget*>(tree)})
        each->installEventFilter(this);
    connect(filter, &QLineEdit::textChanged, this, [this](const QString& letters) {
        model->Narrow(letters);
        tree->expandAll();
        MarkFirst();
        ShowTitle();
    });
    connect(stop, &QToolButton::clicked, this, &MatchesPanel::StopAsked);
    connect(tree, &QTreeView::clicked, this, [this](const QModelIndex& index) { Go(index); });
    hide();
}

void MatchesPanel::Begin(const QString& what, const CaretPlace& from)
{
    subject = what;
    origin = from;
    isVisited = false;
    isSearching = true;
    hasMore = false;
    filter->blockSignals(true);
    filter->clear();
    filter->blockSignals(false);
    model->Narrow({});
    model->Clear();
    ShowTitle();
    show();
}

void MatchesPanel::Add(std::vector<FoundPlace> places)
{
    const int files = model->rowCount({});
    const bool hasOrigin = std::ranges::any_of(places, [this](const FoundPlace& each) { return IsAt(each, origin); });
    model->Add(std::move(places));
    for (int file = std::max(files - 1, 0); file < model->rowCount({}); ++file)
        tree->expand(model->index(file, 0, {}));
    if (!tree->currentIndex().isValid())
        MarkFirst();
    if (hasOrigin && !isVisited)
        MarkOrigin();
    ShowTitle();
}

void MatchesPanel::MarkFirst()
{
    isVisited = false;
    tree->setCurrentIndex(model->Next({}, false));
}

void MatchesPanel::MarkOrigin()
{
    QModelIndex at = model->Next({}, false);
    while (at.isValid() && !IsAt(*model->PlaceAt(at), origin))
        at = model->Next(at, false);
    if (!at.isValid())
        return; // the filter leaves it out
    isVisited = true;
    tree->setCurrentIndex(at);
}

void MatchesPanel::End(bool more)
{
    isSearching = false;
    hasMore = more;
    ShowTitle();
}

void MatchesPanel::ShowTitle()
{
    const size_t shown = model->ShownPlaces();
    QString count = shown == model->All() ? QString::number(shown) : tr("%1 of %2").arg(shown).arg(model->All());
    if (hasMore)
        count = tr("The first %1").arg(count);
    const int files = model->rowCount({});
    const QString where = files > 1 ? tr(", in %1 files").arg(files) : QString();
    title->setText(count + ' ' + subject + where + (isSearching ? tr(" \u2026") : QString()));
    stop->setVisible(isSearching);
}

void MatchesPanel::TakeKeyboard()
{
    tree->setFocus();
}

QString MatchesPanel::Title() const
{
    return title->text();
}

bool MatchesPanel::Step(bool backwards)
{
    const QModelIndex next = model->Next(isVisited ? tree->currentIndex() : QModelIndex(), backwards);
    if (!next.isValid())
        return false;
    tree->setCurrentIndex(next);
    Go(next);
    return true;
}

void MatchesPanel::Go(const QModelIndex& index)
{
    const FoundPlace* place = model->PlaceAt(index);
    if (place == nullptr)
        return;
    isVisited = true;
    emit Chosen(FoundPlace(*place)); // a copy: it may be replaced meanwhile
}

void MatchesPanel::Move(int rows)
{
    QModelIndex at = tree->currentIndex();
    for (int step = 0; step < std::abs(rows); ++step) {
        const QModelIndex next = model->Next(at, rows < 0);
        if (!next.isValid())
            break;
        at = next;
    }
    if (!at.isValid())
        return;
    isVisited = true; // the user has seen it in the list, and steps on from there
    tree->setCurrentIndex(at);
}

bool MatchesPanel::KeyPressed(const QObject* watched, const QKeyEvent& key)
{
    const int rows = RowsFor(key.key(), kPage);
    if (key.key() == Qt::Key_Escape)
        emit Left();
    else if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)
        Go(tree->currentIndex());
    else if (rows != 0)
        Move(rows);
    else if (watched != filter && !key.text().isEmpty() && key.text().front().isPrint())
        StartNarrowing(key.text());
    else
        return false;
    return true;
}

// Letters narrow the list, wherever the keyboard is in the panel.
void MatchesPanel::StartNarrowing(const QString& letters)
{
    filter->setFocus();
    filter->setText(filter->text() + letters);
}

bool MatchesPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        return KeyPressed(watched, *static_cast<const QKeyEvent*>(event));
    return QDockWidget::eventFilter(watched, event);
}

} // namespace wren
