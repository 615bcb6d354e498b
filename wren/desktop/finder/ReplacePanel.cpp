#include "wren/desktop/finder/ReplacePanel.h"

#include "wren/desktop/symbols/RowText.h"

#include <QApplication>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr int kAroundParts = 4; // pixels
constexpr int kDigits = 6;      // room for a line's number

// A line of a match: what is marked in it, and its colour.
struct Half {
    std::string source;
    size_t start = 0; // of what is marked, bytes
    size_t size = 0;
    QColor behind;
};

// A file with its name; a match with its line before, and below it after.
class ReplacementPainter : public QStyledItemDelegate {
public:
    ReplacementPainter(const ReplaceModel& model, QObject* parent)
        : QStyledItemDelegate(parent), model(model), code(QFontDatabase::systemFont(QFontDatabase::FixedFont))
    {
    }

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override
    {
        const int line = QFontMetrics(code).height();
        return {100, (model.LineAt(index) == nullptr ? line : 2 * line) + kAroundParts};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override
    {
        QStyleOptionViewItem option = given;
        initStyleOption(&option, index);
        const QStyle& style = option.widget == nullptr ? *QApplication::style() : *option.widget->style();
        QRect free = style.subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
        free.setRight(given.rect.right() - kAroundParts);
        option.text.clear();
        style.drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
        const bool isMarked = option.state.testFlag(QStyle::State_Selected);
        const QColor paper = option.palette.color(isMarked ? QPalette::Highlight : QPalette::Base);
        const QColor ink = option.palette.color(isMarked ? QPalette::HighlightedText : QPalette::Text);
        if (const FoundLine* line = model.LineAt(index)) {
            DrawMatch(*painter, *line, free, ink, paper);
        } else {
            QFont font = option.font;
            font.setBold(true);
            DrawLine(*painter, free, Shown(model.FileAt(index).shown), font, ink);
        }
    }

private:
    void DrawMatch(QPainter& painter, const FoundLine& line, QRect free, const QColor& ink, const QColor& paper) const
    {
        const QFontMetrics metrics(code);
        QRect half = free;
        half.setHeight(free.height() / 2);
        DrawLine(painter, half, QString::number(line.line), code, Faint(ink, paper));
        half.setLeft(free.left() + metrics.horizontalAdvance('0') * kDigits);
        const bool isDark = qGray(paper.rgb()) < 128;
        const size_t blanks = std::min(line.source.find_first_not_of(" \t"), line.matchStart);
        const size_t start = line.matchStart - blanks;
        DrawHalf(painter, half, ink,
                 {line.source.substr(blanks), start, line.matchSize, isDark ? QColor(0x6e2f2f) : QColor(0xffd0cc)});
        half.moveTop(half.bottom() + 1);
        DrawHalf(
            painter, half, ink,
            {SourceAfter(line).substr(blanks), start, line.with.size(), isDark ? QColor(0x2f5b3a) : QColor(0xc6efce)});
    }

    void DrawHalf(QPainter& painter, const QRect& where, const QColor& ink, const Half& half) const
    {
        const std::string_view source = half.source;
        QTextCharFormat mark;
        mark.setBackground(half.behind);
        mark.setForeground(qGray(half.behind.rgb()) < 128 ? Qt::white : Qt::black);
        const auto before = static_cast<int>(Shown(source.substr(0, half.start)).size());
        const auto size = static_cast<int>(Shown(source.substr(half.start, half.size)).size());
        QString line = Shown(source);
        for (const char end : {'\n', '\r'})
            line.replace(end, QChar(0x21B5));
        DrawLine(painter, where, line, code, ink, {{before, size, mark}});
    }

    const ReplaceModel& model;
    const QFont code;
};

} // namespace

ReplacePanel::ReplacePanel(QWidget* parent)
    : QDockWidget(tr("Replace in Files"), parent), model(new ReplaceModel(this)), title(new QLabel),
      replace(new QToolButton), tree(new QTreeView)
{
    setObjectName("replaceInFiles");
    setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kAroundParts, kAroundParts, kAroundParts, 0);
    column->setSpacing(kAroundParts);
    auto* row = new QHBoxLayout;
    row->addWidget(title, 1);
    row->addWidget(replace);
    column->addLayout(row);
    column->addWidget(tree, 1);
    setWidget(content);
    title->setTextFormat(Qt::PlainText);
    title->setAccessibleName(tr("What is listed"));
    replace->setObjectName("replace");
    replace->setText(tr("Replace Checked"));
    replace->setToolTip(tr("Replace what is checked: in open texts as an edit, in other files at once"));
    connect(replace, &QToolButton::clicked, this, &ReplacePanel::ReplaceAsked);
    tree->setAccessibleName(tr("Replacements"));
    tree->setModel(model);
    tree->setItemDelegate(new ReplacementPainter(*model, tree));
    tree->setHeaderHidden(true);
    tree->setFrameShape(QFrame::NoFrame);
    tree->setExpandsOnDoubleClick(false);
    tree->installEventFilter(this);
    connect(tree, &QTreeView::doubleClicked, this, &ReplacePanel::Go);
    connect(model, &ReplaceModel::Chose, this, &ReplacePanel::ShowState);
    hide();
}

void ReplacePanel::Begin()
{
    isSearching = true;
    hasMore = false;
    model->Clear();
    ShowState();
    show();
    raise();
}

void ReplacePanel::Add(FileReplacements file)
{
    model->Add(std::move(file));
    const QModelIndex added = model->index(model->rowCount({}) - 1, 0, {});
    tree->expand(added);
    if (!tree->currentIndex().isValid())
        tree->setCurrentIndex(added);
    ShowState();
}

void ReplacePanel::End(bool more)
{
    isSearching = false;
    hasMore = more;
    ShowState();
    if (model->Count() > 0)
        tree->setFocus();
}

void ReplacePanel::Finish(const QString& did)
{
    isSearching = false;
    model->Clear();
    ShowState();
    title->setText(did);
}

QString ReplacePanel::Title() const
{
    return title->text();
}

// What is listed while a search goes on may be a part of a file's matches later: nothing is replaced before its end.
void ReplacePanel::ShowState()
{
    const size_t chosen = model->CountOfChosen();
    QString text = tr("%1 of %2 replacements in %3 files").arg(chosen).arg(model->Count()).arg(model->rowCount({}));
    if (hasMore)
        text += tr("; there are more matches");
    title->setText(text + (isSearching ? tr(" \u2026") : QString()));
    replace->setEnabled(!isSearching && chosen > 0);
}

void ReplacePanel::Go(const QModelIndex& index)
{
    if (const FoundLine* line = model->LineAt(index))
        emit Chosen(FileReplacements(model->FileAt(index)), FoundLine(*line)); // copies: the list may go meanwhile
}

bool ReplacePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDockWidget::eventFilter(watched, event);
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape)
        emit Left();
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
        Go(tree->currentIndex());
    else
        return false;
    return true;
}

} // namespace wren
