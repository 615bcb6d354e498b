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

// The window is shown, or disposed of before anybody saw it.
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
    // Tags come first: without any, the user is told so even with nothing selected.
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
    // The symbol comes first: a click beside one is to do nothing, not even to ask about tags.
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
    // The host is asked for the place of every lookup, whether or not a list will be shown, and the point below the
    // line is not used: ShowAt() asks again and places the list itself.
    [[maybe_unused]] BPoint belowPattern = host->PointAt(patternStart);
    belowPattern.y += 20;

    Tags tags(localTags, systemTags, pattern, true);
    Present(host, tags, patternStart, type);
    // After a lookup that found nothing as well: stale tags may be why.
    if (DeclarationSettings::Instance()->AutoRebuild())
        tags.UpdateIfNeeded(host);
}
