#include "wren/desktop/TextSwitcher.h"

#include "wren/desktop/symbols/ListKeys.h"
#include "wren/desktop/symbols/SymbolList.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr int kSwitcherRows = 14;   // seen at once
constexpr int kSwitcherWidth = 560; // pixels, at most
constexpr int kSwitcherFrame = 6;   // pixels around the list

Qt::KeyboardModifier ModifierOf(int key)
{
    switch (key) {
    case Qt::Key_Control:
        return Qt::ControlModifier;
    case Qt::Key_Alt:
        return Qt::AltModifier;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return Qt::MetaModifier;
    default:
        return Qt::NoModifier;
    }
}

} // namespace

TextSwitcher::TextSwitcher(QWidget* window) : QFrame(window), list(new SymbolList)
{
    setObjectName("textSwitcher");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kSwitcherFrame, kSwitcherFrame, kSwitcherFrame, kSwitcherFrame);
    column->addWidget(list);
    list->setAccessibleName(tr("Open documents by last use"));
    list->installEventFilter(this);
    connect(list, &SymbolList::clicked, this, &TextSwitcher::Choose);
    hide();
}

void TextSwitcher::Open(std::vector<PaletteItem> items, Qt::KeyboardModifiers modifiers)
{
    held = modifiers;
    list->Show(std::move(items));
    list->Mark(0);
    Fit();
    show();
    raise();
    list->setFocus();
}

void TextSwitcher::Move(int rows)
{
    list->Move(rows);
}

void TextSwitcher::Close()
{
    if (!isVisible())
        return;
    hide();
    emit Closed();
}

const std::vector<PaletteItem>& TextSwitcher::Items() const
{
    return list->Items();
}

int TextSwitcher::Marked() const
{
    return list->Marked();
}

void TextSwitcher::Choose()
{
    const int row = Marked();
    if (row < 0 || !isVisible())
        return Close();
    const PaletteItem item = Items()[static_cast<size_t>(row)];
    hide();
    emit Chosen(item);
}

bool TextSwitcher::KeyPressed(int key)
{
    const int rows = RowsFor(key, kSwitcherRows);
    if (key == Qt::Key_Escape)
        Close();
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
        Choose();
    else if (rows != 0)
        Move(rows);
    return true; // no other key means anything to the list or the window
}

bool TextSwitcher::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        return KeyPressed(static_cast<const QKeyEvent*>(event)->key());
    if (event->type() == QEvent::KeyRelease) {
        const auto* released = static_cast<const QKeyEvent*>(event);
        if (!released->isAutoRepeat() && held.testFlag(ModifierOf(released->key())))
            Choose();
        return true;
    }
    if (event->type() == QEvent::FocusOut && isVisible())
        hide(); // the keyboard is somewhere else already
    return false;
}

void TextSwitcher::Fit()
{
    const QRect area = parentWidget()->rect();
    list->setFixedHeight(std::min(list->Count(), kSwitcherRows) * list->RowHeight());
    layout()->activate();
    resize(std::min(kSwitcherWidth, area.width() * 9 / 10), sizeHint().height());
    move((area.width() - width()) / 2, area.height() / 6);
}

} // namespace wren
