#include "wren/desktop/editor/TextPanes.h"

#include "wren/desktop/editor/CodeView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>

#include <utility>

namespace wren {

namespace {

using Sci = QsciScintillaBase;

// What a view shows of its text.
struct Part {
    long anchor = 0;
    long caret = 0;
    long firstLine = 0;
    long scrolled = 0; // pixels to the right
    std::vector<long> folded;
};

Part PartOf(const CodeView& view)
{
    const ViewText text(view);
    return {text.Send(Sci::SCI_GETANCHOR), text.Send(Sci::SCI_GETCURRENTPOS), view.FirstVisibleLine(),
            text.Send(Sci::SCI_GETXOFFSET), folds::Folded(text)};
}

void ShowPart(CodeView& view, const Part& part)
{
    const ViewText text(view);
    for (const long line : folds::Folded(text))
        text.Send(Sci::SCI_FOLDLINE, line, Sci::SC_FOLDACTION_EXPAND);
    folds::FoldAgain(text, part.folded);
    text.Send(Sci::SCI_SETSEL, part.anchor, part.caret);
    view.ShowFromLine(part.firstLine);
    text.Send(Sci::SCI_SETXOFFSET, part.scrolled);
}

} // namespace

TextPanes::TextPanes(CodeView* adopted) : view(adopted)
{
    setChildrenCollapsible(false);
    addWidget(view);
    setFocusProxy(view);
    connect(view, &CodeView::LookSet, this, [this] {
        if (other != nullptr)
            other->ShareTextOf(*view);
    });
    connect(view, &Sci::SCN_UPDATEUI, this, &TextPanes::FollowView);
}

// While the other part ends, the mouse may still leave it: it is forgotten first.
TextPanes::~TextPanes()
{
    delete std::exchange(other, nullptr); // while the view still has the text
    view->disconnect(this);
}

void TextPanes::SetSplit(Split split)
{
    if (split == Split::None) {
        delete std::exchange(other, nullptr);
        pressed = false;
        return;
    }
    setOrientation(split == Split::Beside ? Qt::Horizontal : Qt::Vertical);
    if (other == nullptr) {
        other = new CodeView;
        other->setAccessibleName(tr("Another part of the text"));
        other->setFocusPolicy(Qt::NoFocus);
        other->viewport()->installEventFilter(this);
        connect(other, &CodeView::ZoomAsked, view, &CodeView::ZoomAsked);
        addWidget(other);
        other->ShareTextOf(*view);
        ShowPart(*other, PartOf(*view));
    }
    setSizes({1, 1}); // equal parts of what there is
}

Split TextPanes::IsSplit() const
{
    if (other == nullptr)
        return Split::None;
    return orientation() == Qt::Horizontal ? Split::Beside : Split::Below;
}

void TextPanes::Exchange()
{
    if (other == nullptr)
        return;
    const Part here = PartOf(*view);
    const Part there = PartOf(*other);
    const QList<int> kept = sizes();
    insertWidget(0, widget(1));
    setSizes(kept);
    view->EndTyping();
    ShowPart(*view, there);
    ShowPart(*other, here);
}

void TextPanes::FollowView()
{
    if (other != nullptr)
        other->FollowMarksOf(*view);
}

bool TextPanes::eventFilter(QObject* watched, QEvent* event)
{
    if (other == nullptr || watched != other->viewport())
        return QSplitter::eventFilter(watched, event);
    return Forward(*event);
}

bool TextPanes::Forward(QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (!pressed)
            Exchange();
        pressed = true;
        view->setFocus();
        ForwardMouse(static_cast<QMouseEvent&>(event));
        return true;
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        if (!pressed)
            return false;
        pressed = event.type() == QEvent::MouseMove || static_cast<QMouseEvent&>(event).buttons() != Qt::NoButton;
        ForwardMouse(static_cast<QMouseEvent&>(event));
        return true;
    case QEvent::ContextMenu: {
        const auto& asked = static_cast<QContextMenuEvent&>(event);
        QContextMenuEvent mapped(asked.reason(), view->viewport()->mapFromGlobal(asked.globalPos()), asked.globalPos(),
                                 asked.modifiers());
        QApplication::sendEvent(view->viewport(), &mapped);
        return true;
    }
    default:
        return false;
    }
}

void TextPanes::ForwardMouse(const QMouseEvent& event)
{
    const QPointF place = view->viewport()->mapFromGlobal(event.globalPosition());
    QMouseEvent mapped(event.type(), place, event.globalPosition(), event.button(), event.buttons(), event.modifiers());
    QApplication::sendEvent(view->viewport(), &mapped);
}

} // namespace wren
