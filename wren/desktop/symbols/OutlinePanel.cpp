#include "wren/desktop/symbols/OutlinePanel.h"

#include "wren/desktop/symbols/ListKeys.h"
#include "wren/desktop/symbols/RowText.h"
#include "wren/desktop/symbols/SymbolList.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

#include <utility>

namespace wren {

namespace {

constexpr int kSpace = 4; // pixels
constexpr int kRowsOfAPage = 10;

} // namespace

OutlinePanel::OutlinePanel(QWidget* parent)
    : QDockWidget(tr("Outline"), parent), filter(new QLineEdit), list(new SymbolList)
{
    setObjectName("outline");
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kSpace, kSpace, kSpace, 0);
    column->setSpacing(kSpace);
    column->addWidget(filter);
    column->addWidget(list, 1);
    setWidget(content);
    filter->setPlaceholderText(tr("Narrow the outline"));
    filter->setAccessibleName(tr("Narrow the outline"));
    filter->setClearButtonEnabled(true);
    list->setAccessibleName(tr("Outline"));
    list->setFocusPolicy(Qt::NoFocus);
    setFocusProxy(filter);
    filter->installEventFilter(this);
    connect(filter, &QLineEdit::textChanged, this, &OutlinePanel::ShowNarrowed);
    connect(list, &SymbolList::clicked, this, &OutlinePanel::Choose);
}

void OutlinePanel::Show(std::vector<PaletteItem> items)
{
    all = std::move(items);
    ShowNarrowed();
}

void OutlinePanel::ShowNarrowed()
{
    const QString letters = filter->text();
    std::vector<PaletteItem> narrowed;
    for (const PaletteItem& item : all)
        if (Shown(item.name).contains(letters, Qt::CaseInsensitive))
            narrowed.push_back(item);
    list->Show(std::move(narrowed));
    FollowCaret(caret);
}

// The last symbol that begins at or before the caret, unless it ends before it: then the one around both.
void OutlinePanel::FollowCaret(long line)
{
    caret = line;
    int around = -1;
    for (int row = 0; row < list->Count(); ++row) {
        const PaletteItem& item = list->Items()[static_cast<size_t>(row)];
        if (item.line > line)
            break;
        if (item.line == line || item.endLine >= line)
            around = row;
    }
    if (around != list->Marked())
        list->Mark(around);
}

const std::vector<PaletteItem>& OutlinePanel::Items() const
{
    return list->Items();
}

int OutlinePanel::Marked() const
{
    return list->Marked();
}

void OutlinePanel::Choose()
{
    if (list->Marked() >= 0)
        emit Chosen(PaletteItem(list->Items()[static_cast<size_t>(list->Marked())]));
}

bool OutlinePanel::KeyPressed(int key)
{
    const int rows = RowsFor(key, kRowsOfAPage);
    if (key == Qt::Key_Escape)
        emit Left();
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
        Choose();
    else if (rows != 0)
        list->Move(rows);
    else
        return false;
    return true;
}

bool OutlinePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        return KeyPressed(static_cast<const QKeyEvent*>(event)->key());
    return QDockWidget::eventFilter(watched, event);
}

} // namespace wren
