#include "wren/desktop/editor/NameCard.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/ViewText.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace wren {

namespace {

constexpr int kBeside = 6;       // pixels, between the frame and the text in it
constexpr int kFromEdge = 12;    // pixels
constexpr int kWidestText = 100; // characters

} // namespace

NameCard::NameCard(CodeView& view, const QString& accessibleName) : QLabel(&view), view(view)
{
    setAccessibleName(accessibleName);
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    setAlignment(Qt::AlignTop | Qt::AlignLeft);
    setIndent(0);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    hide();
    view.installEventFilter(this);
    view.viewport()->installEventFilter(this);
    for (const QScrollBar* bar : {view.verticalScrollBar(), view.horizontalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, &NameCard::hide);
}

void NameCard::Show(long offset, const QString& html)
{
    TakeLook();
    setText(html);
    Place(offset);
    show();
    raise();
}

void NameCard::TakeLook()
{
    const EditorColours& colours = ColoursOf(view.Look().dark);
    setStyleSheet(QString("color: %1; background: %2; border: 1px solid %3; padding: %4px")
                      .arg(colours.text.name(), colours.margin.name(), colours.lineNumbers.name())
                      .arg(kBeside));
    setFont(view.Look().font);
}

// As wide as its lines are, and no wider than people read. A label's own idea is a square.
QSize NameCard::SizeWithin(int widest) const
{
    constexpr int kAround = 2 * (kBeside + 1);
    QTextDocument document;
    document.setDocumentMargin(0);
    document.setDefaultFont(font());
    document.setHtml(text());
    document.setTextWidth(std::max(widest - kAround, 1));
    const int width = static_cast<int>(std::ceil(document.idealWidth()));
    document.setTextWidth(width);
    return {width + kAround + 1, static_cast<int>(std::ceil(document.size().height())) + kAround};
}

void NameCard::Place(long offset)
{
    const ViewText text(view);
    const QPoint at(static_cast<int>(text.Send(QsciScintillaBase::SCI_POINTXFROMPOSITION, 0, offset)),
                    static_cast<int>(text.Send(QsciScintillaBase::SCI_POINTYFROMPOSITION, 0, offset)));
    const QRect area = view.viewport()->geometry();
    const int lineHeight = static_cast<int>(text.Send(QsciScintillaBase::SCI_TEXTHEIGHT, 0));
    const int widest = std::min(area.width() - 2 * kFromEdge, fontMetrics().averageCharWidth() * kWidestText);
    const int roomAbove = at.y();
    const int roomBelow = area.height() - at.y() - lineHeight;
    QSize size = SizeWithin(widest);
    const bool isAbove = size.height() <= roomAbove || roomAbove >= roomBelow;
    size.setHeight(std::min(size.height(), std::max(isAbove ? roomAbove : roomBelow, lineHeight)));
    const int left = std::clamp(at.x(), kFromEdge, std::max(area.width() - kFromEdge - size.width(), kFromEdge));
    const int top = isAbove ? at.y() - size.height() : at.y() + lineHeight;
    setGeometry(QRect(area.topLeft() + QPoint(left, top), size));
}

bool NameCard::eventFilter(QObject* watched, QEvent* event)
{
    const bool isEscape =
        event->type() == QEvent::KeyPress && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape;
    const bool isLeft = event->type() == QEvent::FocusOut && watched == &view;
    if (isEscape || isLeft || event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Hide ||
        event->type() == QEvent::Resize)
        hide();
    return false;
}

void NameCard::mousePressEvent(QMouseEvent*)
{
    hide();
}

} // namespace wren
