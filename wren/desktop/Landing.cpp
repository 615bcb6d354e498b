#include "wren/desktop/Landing.h"

#include "wren/core/Host.h"
#include "wren/desktop/AskedTexts.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NamedLine.h"
#include "wren/desktop/PlaceActions.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/FoundPlace.h"
#include "wren/desktop/symbols/PaletteItem.h"
#include "wren/symbols/NameColumn.h"

#include <optional>

namespace wren {

Landing::Landing(Host& host, MainWindow& window, PlaceActions& places) : host(host), window(window), places(places) {}

void Landing::GoTo(const FoundPlace& place)
{
    places.OpenMatch(place.path, place.line, place.column);
    const Document* document = host.Current();
    if (place.column > 0 && document != nullptr && AskedTexts::PathOf(*document) == place.path)
        Mark(window.Tabs().CurrentView()->Caret(), place.nameSize);
}

void Landing::GoTo(const PaletteItem& item, long line)
{
    places.OpenMatch(item.path, line > 0 ? line : item.line);
    const Document* document = host.Current();
    if (line > 0 || item.line == 0 || document == nullptr || document->Path() != item.path)
        return;
    const long start = document->LineStart(item.line - 1); // the index knows only lines
    const std::string text = document->Text(start, document->LineEnd(item.line - 1));
    const std::string word = item.name.substr(0, item.name.find(':'));
    const long offset = start + static_cast<long>(NameColumn(text, word)) - 1;
    window.Tabs().CurrentView()->GoTo(offset);
    Mark(offset, word.size());
}

// The caret is where the plug-in was asked, so the name there is the one that it has found.
void Landing::GoToMatch(const std::string& path, long line)
{
    const Document* asked = host.Current();
    const std::string name = asked == nullptr ? "" : NameAt(*asked, window.Tabs().CurrentView()->Caret());
    places.OpenMatch(path, line);
    const Document* document = host.Current();
    if (document == nullptr || document->Path() != AbsolutePath(path))
        return;
    if (const std::optional<long> offset = OffsetOfNameNear(*document, line, name)) {
        window.Tabs().CurrentView()->GoTo(*offset);
        Mark(*offset, name.size());
    }
}

void Landing::Mark(long offset, size_t size)
{
    mark.Show(*window.Tabs().CurrentView(), offset, static_cast<long>(size));
}

} // namespace wren
