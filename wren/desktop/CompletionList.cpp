#include "wren/desktop/CompletionList.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/ViewText.h"
#include "wren/desktop/symbols/ListKeys.h"
#include "wren/desktop/symbols/RowText.h"
#include "wren/desktop/symbols/SymbolList.h"

#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr int kRows = 10;          // seen at once
constexpr size_t kMeasured = 100;  // rows
constexpr int kWidestText = 90;    // characters
constexpr int kLeastText = 30;     // characters
constexpr int kBetween = 56;       // pixels, for the icon and around the parts of a row
constexpr int kBeforeName = 6 + 6; // pixels, around the icon

} // namespace

CompletionList::CompletionList(CodeView& view) : QFrame(&view), view(view), list(new SymbolList)
{
    setObjectName("completions");
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->addWidget(list);
    list->setFocusPolicy(Qt::NoFocus);
    list->setAccessibleName(tr("Completions"));
    list->setCursor(Qt::ArrowCursor);
    connect(list, &SymbolList::clicked, this, &CompletionList::Clicked);
    hide();
    view.installEventFilter(this);
    view.viewport()->installEventFilter(this);
    for (const QScrollBar* bar : {view.verticalScrollBar(), view.horizontalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, [this] {
            if (isVisible())
                Place();
        });
}

void CompletionList::Show(long offset, std::vector<PaletteItem> items)
{
    word = offset;
    TakeLook();
    list->Show(std::move(items));
    list->Mark(0);
    list->scrollToTop();
    Place();
    show();
    raise();
}

bool CompletionList::Move(int key)
{
    const int rows = RowsFor(key, std::max(1, list->viewport()->height() / list->RowHeight()));
    list->Move(rows);
    return rows != 0;
}

const std::vector<PaletteItem>& CompletionList::Items() const
{
    return list->Items();
}

int CompletionList::Marked() const
{
    return list->Marked();
}

void CompletionList::TakeLook()
{
    const EditorColours& colours = ColoursOf(view.Look().dark);
    QPalette palette = view.window()->palette();
    palette.setColor(QPalette::Base, colours.margin);
    palette.setColor(QPalette::Text, colours.text);
    palette.setColor(QPalette::WindowText, colours.lineNumbers); // the frame
    setPalette(palette);
    list->setPalette(palette);
    list->setFont(view.Look().font);
}

int CompletionList::WidthOfRows() const
{
    const QFontMetrics metrics = list->fontMetrics();
    const int side = metrics.height();
    int widest = 0;
    const std::vector<PaletteItem>& items = list->Items();
    for (size_t row = 0; row < std::min(items.size(), kMeasured); ++row) {
        const PaletteItem& item = items[row];
        const int width = metrics.horizontalAdvance(Shown(item.name) + Shown(item.detail) + Shown(item.where));
        widest = std::max(widest, width);
    }
    const int letter = metrics.averageCharWidth();
    return std::clamp(widest + side + kBetween, letter * kLeastText, letter * kWidestText);
}

// The names stand below the word. Above the line where there is more room.
void CompletionList::Place()
{
    const ViewText text(view);
    const QPoint at(static_cast<int>(text.Send(QsciScintillaBase::SCI_POINTXFROMPOSITION, 0, word)),
                    static_cast<int>(text.Send(QsciScintillaBase::SCI_POINTYFROMPOSITION, 0, word)));
    const QRect area = view.viewport()->geometry();
    const int line = static_cast<int>(text.Send(QsciScintillaBase::SCI_TEXTHEIGHT, 0));
    const int roomBelow = area.height() - at.y() - line;
    const bool isBelow = roomBelow >= at.y() || roomBelow >= kRows * list->RowHeight();
    const int room = std::max(isBelow ? roomBelow : at.y(), list->RowHeight());
    const int rows = std::clamp(room / list->RowHeight(), 1, std::min(kRows, list->Count()));
    const int height = rows * list->RowHeight() + 4; // with both frames
    const int width = std::min(WidthOfRows(), area.width());
    const int beforeName = list->fontMetrics().height() + kBeforeName;
    const int left = std::clamp(at.x() - beforeName, 0, area.width() - width);
    const int top = isBelow ? at.y() + line : at.y() - height;
    setGeometry(QRect(area.topLeft() + QPoint(left, top), QSize(width, height)));
}

bool CompletionList::eventFilter(QObject* watched, QEvent* event)
{
    const bool isLeft = event->type() == QEvent::FocusOut && watched == &view;
    if (isLeft || event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Hide ||
        event->type() == QEvent::Resize)
        hide();
    return false;
}

} // namespace wren
