#include "plugin/LookupCommands.h"

#include "plugin/PluginInterface.h"
#include "scan/SelectionScanner.h"
#include "settings/DeclarationSettings.h"
#include "tags/TagDiscovery.h"
#include "tags/Tags.h"
#include "vetch/app/Modifiers.h"
#include "vetch/display/Display.h"
#include "vetch/storage/BEntry.h"
#include "windows/EntryWindow.h"
#include "windows/SearchWindow.h"

namespace {

struct Pattern {
    std::string text;
    long start = 0;
};

bool FindPattern(PluginInterface* host, long selStart, long selEnd, Pattern& found)
{
    long end = 0;
    return ScanForSuggestionPattern(host, selStart, selEnd, found.start, end, found.text, false);
}

bool PopulateByType(SearchWindow& results, Tags& tags, LookupType type)
{
    switch (type) {
    case kLookUpAny:
        return results.PopulateSelf(tags);
    case kLookUpDeclarations:
        return results.PopulateSelfWithDeclarations(tags);
    default:
        return results.PopulateSelfWithDefinitions(tags);
    }
}

// Shows the window, or disposes of it unseen.
void Present(PluginInterface* host, Tags& tags, long patternStart, LookupType type)
{
    auto* results = new SearchWindow;
    if (!PopulateByType(*results, tags, type)) {
        results->Quit();
        beep();
    } else if (results->CountEntries() == 1) {
        BMessage open(B_REFS_RECEIVED);
        results->InvokeAtIndexWithMessage(0, open);
        results->Quit();
    } else {
        results->ShowAt(host, patternStart);
    }
}

} // namespace

void SelectionSymbolLookup(PluginInterface* host, bool forceDialog, LookupType type)
{
    // Tags come first: without any, the user learns so even with nothing selected.
    BEntry localTags;
    BEntry systemTags;
    if (!FindOrCreateTags(host, localTags, systemTags))
        return;
    long selStart = 0;
    long selEnd = 0;
    host->GetSelection(&selStart, &selEnd);
    Pattern pattern;
    if (!forceDialog && FindPattern(host, selStart, selEnd, pattern))
        LookUpPattern(host, &localTags, &systemTags, pattern.text, pattern.start, type);
    else
        EntryWindow::CreateOrShow(host, &localTags, &systemTags);
}

void SymbolLookupAt(PluginInterface* host, long offset, LookupType type)
{
    // The symbol comes first: a click beside one must not do anything, not even ask about tags.
    Pattern pattern;
    if (!FindPattern(host, offset, offset, pattern))
        return;
    BEntry localTags;
    BEntry systemTags;
    if (FindOrCreateTags(host, localTags, systemTags))
        LookUpPattern(host, &localTags, &systemTags, pattern.text, pattern.start, type);
}

void LookUpPattern(PluginInterface* host, const BEntry* localTags, const BEntry* systemTags, const std::string& pattern,
                   long patternStart, LookupType type)
{
    // Every lookup asks the host for the place, even without a list. The point is unused: ShowAt() asks again and
    // places the list.
    [[maybe_unused]] BPoint belowPattern = host->PointAt(patternStart);
    belowPattern.y += 20;

    Tags tags(localTags, systemTags, pattern, true);
    Present(host, tags, patternStart, type);
    // Also after a lookup without a match: stale tags may be the reason.
    if (DeclarationSettings::Instance()->AutoRebuild())
        tags.UpdateIfNeeded(host);
}
