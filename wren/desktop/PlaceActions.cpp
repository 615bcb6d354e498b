#include "wren/desktop/PlaceActions.h"

#include "vetch/display/Display.h"
#include "wren/core/Host.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/editor/CodeView.h"

#include <QInputDialog>

#include <algorithm>

namespace wren {

PlaceActions::PlaceActions(Host& host, EditorTabs& tabs, DocumentActions& documents)
    : host(host), tabs(tabs), documents(documents)
{
    connect(&documents, &DocumentActions::Named, this,
            [this](long document, const std::string& path) { places.DocumentNamed(document, path); });
    connect(&documents, &DocumentActions::Closing, this, [this](long document) { places.DocumentClosed(document); });
}

void PlaceActions::GoBack()
{
    GoTo(places.Back(Here()));
}

void PlaceActions::GoForward()
{
    GoTo(places.Forward(Here()));
}

void PlaceActions::GoTo(const std::optional<VisitedPlace>& place)
{
    if (!place)
        return beep();
    const Document* document = host.AllDocuments().Find(place->document);
    if (document != nullptr)
        tabs.Raise(document->Id());
    else if (place->path.empty() || !documents.Open(place->path))
        return;
    tabs.CurrentView()->GoTo(std::min(place->offset, host.Current()->Length()));
    emit Went();
}

void PlaceActions::GoToLine()
{
    const Document* document = host.Current();
    if (document == nullptr)
        return;
    const int last = static_cast<int>(document->LineAt(document->Length())) + 1;
    const int now = static_cast<int>(document->LineAt(tabs.CurrentView()->Caret())) + 1;
    bool chosen = false;
    const int line =
        QInputDialog::getInt(tabs.window(), tr("Go to Line"), tr("Line, 1 to %1:").arg(last), now, 1, last, 1, &chosen);
    if (!chosen)
        return;
    places.Left(Here());
    tabs.CurrentView()->GoToLine(line);
    tabs.FocusCurrent();
    emit Went();
}

void PlaceActions::OpenMatch(const std::string& path, long line, long column)
{
    const VisitedPlace left = Here();
    if (!documents.Open(path, line, column))
        return;
    places.Left(left);
    emit Went();
}

void PlaceActions::TextMoves(long document, long offset, long removed, long inserted)
{
    places.TextChanged(document, offset, removed, inserted);
}

VisitedPlace PlaceActions::Here() const
{
    const Document* document = host.Current();
    return document == nullptr ? VisitedPlace()
                               : VisitedPlace{document->Id(), document->Path(), tabs.CurrentView()->Caret()};
}

} // namespace wren
