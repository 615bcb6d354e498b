#include "wren/desktop/editor/PointedName.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/ViewText.h"

#include <Qsci/qscilexercpp.h>

#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <iterator>
#include <utility>

namespace wren {

bool PointedName::IsStyleOfNames(int style)
{
    constexpr int kStyles[] = {QsciLexerCPP::Identifier, QsciLexerCPP::PreProcessor, QsciLexerCPP::KeywordSet2,
                               QsciLexerCPP::GlobalClass, QsciLexerCPP::UserLiteral};
    return std::ranges::find(kStyles, style) != std::end(kStyles);
}

void PointedName::Watch(CodeView& view)
{
    if (watchedViews.contains(&view))
        return;
    watchedViews.insert(&view);
    view.viewport()->setMouseTracking(true);
    view.viewport()->installEventFilter(this);
    view.installEventFilter(this);
    connect(&view, &QObject::destroyed, this, [this](const QObject* gone) { watchedViews.remove(gone); });
}

std::optional<PointedName::Name> PointedName::NameAt(const CodeView& view, QPoint point)
{
    const ViewText text(view);
    const long at = text.Send(QsciScintillaBase::SCI_CHARPOSITIONFROMPOINTCLOSE, point.x(), point.y());
    if (at < 0)
        return std::nullopt;
    const Name name{text.Send(QsciScintillaBase::SCI_WORDSTARTPOSITION, at, true),
                    text.Send(QsciScintillaBase::SCI_WORDENDPOSITION, at, true)};
    if (name.start >= name.end || at >= name.end || !IsStyleOfNames(text.StyleAt(name.start)))
        return std::nullopt;
    return name;
}

bool PointedName::IsLink(Qt::KeyboardModifiers held) const
{
    return held == Qt::ControlModifier && (!mayClick || mayClick());
}

bool PointedName::eventFilter(QObject* watched, QEvent* event)
{
    if (auto* view = qobject_cast<CodeView*>(watched)) {
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease)
            KeyChanged(*view, static_cast<const QKeyEvent&>(*event));
        else if (event->type() == QEvent::FocusOut)
            EndUnderline();
        return false;
    }
    auto* view = watched->parent() == nullptr ? nullptr : qobject_cast<CodeView*>(watched->parent());
    return view != nullptr && OfText(*view, *event);
}

bool PointedName::OfText(CodeView& view, QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseMove: {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        Moved(view, mouse.position().toPoint(), mouse.modifiers());
        return pressed.has_value(); // a click on a name selects nothing
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return Pressed(view, static_cast<const QMouseEvent&>(event));
    case QEvent::MouseButtonRelease:
        return Released(view, static_cast<const QMouseEvent&>(event));
    case QEvent::ToolTip:
        rested = NameAt(view, static_cast<const QHelpEvent&>(event).pos());
        if (rested)
            emit Rested(view, rested->start);
        return rested.has_value();
    case QEvent::Leave:
        EndUnderline();
        return false;
    default:
        return false;
    }
}

bool PointedName::Pressed(CodeView& view, const QMouseEvent& event)
{
    EndRest();
    if (event.button() != Qt::LeftButton || !IsLink(event.modifiers()))
        return false;
    pressed = NameAt(view, event.position().toPoint());
    return pressed.has_value();
}

bool PointedName::Released(CodeView& view, const QMouseEvent& event)
{
    const std::optional<Name> name = std::exchange(pressed, std::nullopt);
    if (!name)
        return false;
    EndUnderline();
    if (NameAt(view, event.position().toPoint()) == name)
        emit Clicked(view, name->start);
    return true;
}

void PointedName::Moved(CodeView& view, QPoint point, Qt::KeyboardModifiers held)
{
    const bool isLink = IsLink(held);
    if (!isLink && underlinedIn == nullptr && !rested)
        return;
    const std::optional<Name> name = NameAt(view, point);
    if (rested && name != rested)
        EndRest();
    if (isLink && name)
        Underline(view, *name);
    else
        EndUnderline();
}

void PointedName::KeyChanged(CodeView& view, const QKeyEvent& event)
{
    const bool isControl = event.key() == Qt::Key_Control;
    if (event.type() == QEvent::KeyPress && !isControl)
        EndRest();
    if (isControl && event.type() == QEvent::KeyPress && view.viewport()->underMouse())
        Moved(view, view.viewport()->mapFromGlobal(QCursor::pos()), event.modifiers() | Qt::ControlModifier);
    else
        EndUnderline();
}

void PointedName::Underline(CodeView& view, const Name& name)
{
    if (underlinedIn == &view && underlined == name)
        return;
    EndUnderline();
    const ViewText text(view);
    view.indicatorDefine(QsciScintilla::PlainIndicator, kIndicator);
    view.setIndicatorForegroundColor(ColoursOf(view.Look().dark).keyword, kIndicator);
    text.Send(QsciScintillaBase::SCI_SETINDICATORCURRENT, kIndicator);
    text.Send(QsciScintillaBase::SCI_INDICATORFILLRANGE, name.start, name.end - name.start);
    view.viewport()->setCursor(Qt::PointingHandCursor);
    underlinedIn = &view;
    underlined = name;
}

// The text may have changed since, so that all of it is cleared.
void PointedName::EndUnderline()
{
    if (underlinedIn == nullptr)
        return;
    const ViewText text(*underlinedIn);
    text.Send(QsciScintillaBase::SCI_SETINDICATORCURRENT, kIndicator);
    text.Send(QsciScintillaBase::SCI_INDICATORCLEARRANGE, 0, text.Length());
    underlinedIn->viewport()->setCursor(Qt::IBeamCursor);
    underlinedIn = nullptr;
}

void PointedName::EndRest()
{
    if (std::exchange(rested, std::nullopt))
        emit Gone();
}

} // namespace wren
