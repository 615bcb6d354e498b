#include "wren/desktop/DesktopFace.h"

#include "wren/core/Document.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/KeyRouter.h"
#include "wren/desktop/editor/CodeView.h"

#include <QWidget>

namespace wren {

namespace {

BRect RectFrom(const QRect& rect)
{
    return {static_cast<float>(rect.left()), static_cast<float>(rect.top()),
            static_cast<float>(rect.left() + rect.width()), static_cast<float>(rect.top() + rect.height())};
}

} // namespace

DesktopFace::DesktopFace(EditorTabs& tabs, QWidget& window, QWidget& button, const EditorLook& look)
    : tabs(tabs), window(window), button(button), look(look)
{
}

std::unique_ptr<TextStore> DesktopFace::MakeText(long document)
{
    return tabs.Add(document, look)->MakeStore();
}

BRect DesktopFace::DocumentWindowFrame() const
{
    return RectFrom(QRect(window.mapToGlobal(QPoint(0, 0)), window.size()));
}

BRect DesktopFace::TextBounds(const Document& document) const
{
    const CodeView* view = tabs.ViewOf(document.Id());
    return view == nullptr ? BRect() : view->TextBounds();
}

BRect DesktopFace::ButtonFrame(const Document&) const
{
    return RectFrom(QRect(button.mapTo(&window, QPoint(0, 0)), button.size()));
}

BPoint DesktopFace::PointAt(const Document& document, long offset) const
{
    const CodeView* view = tabs.ViewOf(document.Id());
    asked = view == nullptr ? QRect() : view->LineFrom(offset);
    return view == nullptr ? BPoint() : view->BaselineAt(offset);
}

long DesktopFace::OffsetAt(const Document& document, BPoint where) const
{
    const CodeView* view = tabs.ViewOf(document.Id());
    return view == nullptr ? 0 : view->OffsetAtPoint(where);
}

MouseState DesktopFace::Mouse() const
{
    return router == nullptr ? MouseState() : router->Mouse();
}

// Qt cannot tell whether more keys wait. Completing takes less time than drawing a key, so nothing is lost by it.
bool DesktopFace::InputPending() const
{
    return keysWait && keysWait();
}

void DesktopFace::OpenMatch(const std::string& path, long line)
{
    if (onOpenMatch)
        onOpenMatch(path, line);
}

void DesktopFace::Warn(const std::string& text)
{
    if (onWarn)
        onWarn(text);
}

void DesktopFace::Changed(const HostChange& change)
{
    if (onWorksheetGrown && std::holds_alternative<WorksheetAppended>(change))
        onWorksheetGrown();
}

} // namespace wren
