#include "completion/CompletionCommands.h"

#include "base/Utf8.h"
#include "completion/CompletionWindow.h"
#include "completion/Completions.h"
#include "plugin/PluginInterface.h"
#include "scan/HostText.h"
#include "scan/PatternScan.h"
#include "scan/SelectionScanner.h"
#include "tags/Candidates.h"
#include "tags/CompletionCache.h"
#include "tags/TagDiscovery.h"
#include "tags/Tags.h"
#include "vetch/display/Display.h"
#include "vetch/storage/BEntry.h"
#include "windows/SearchWindow.h"

namespace {

struct Selection {
    long start = 0;
    long end = 0;
};

Selection SelectionOf(PluginInterface* host)
{
    Selection selection;
    host->GetSelection(&selection.start, &selection.end);
    return selection;
}

// Inserts at the caret, behind a selection, which stays. Leaves no room for a selector's arguments: the candidates may
// agree on a part of it only, and the user continues from there.
void InsertAtCaret(PluginInterface* host, long caret, const std::string& text)
{
    const long length = static_cast<long>(text.length());
    host->BeginUndo(caret, caret, "Insert symbol completion");
    host->InsertText(text.c_str(), length, caret);
    host->Select(caret + length, caret + length);
}

// Makes a new window: the palettes are closed, so there is no other.
void OfferCompletions(PluginInterface* host, Tags& tags, Completions& completions, long offset)
{
    auto* window = new CompletionWindow(host, host->documentID);
    window->PopulateList(completions, tags, &Completions::Populate);
    window->ShowAt(host, offset);
}

// Made at the first key stroke that completes, and kept: the next documents likely need the same names.
CompletionCache& Cache()
{
    static CompletionCache cache;
    return cache;
}

void ShowCandidates(PluginInterface* host, Tags& tags, const std::vector<std::string>& names, long offset)
{
    CompletionWindow* window = CompletionWindow::gCompletionWindow;
    const bool isNew = window == nullptr;
    if (isNew)
        window = new CompletionWindow(host, host->documentID);
    AutoCompletionPopulator populator(&names);
    window->PopulateList(populator, tags, &AutoCompletionPopulator::Populate);
    if (isNew)
        window->ShowAt(host, offset);
    else
        window->RepositionAt(host, offset);
}

} // namespace

CompletionActions gCompletionActions = {.routeKey = CompletionWindow::RouteKeyboardEventIfNeeded};

void CloseAnyPalettes()
{
    if (SearchWindow* results = SearchWindow::gSearchWin)
        results->Quit();
    if (CompletionWindow* completions = CompletionWindow::gCompletionWindow)
        completions->Quit();
}

void SelectionSuggestCompletions(PluginInterface* host)
{
    BEntry localTags;
    BEntry systemTags;
    if (!FindOrCreateTags(host, localTags, systemTags))
        return;
    const Selection selection = SelectionOf(host);
    const long caret = selection.end;
    const scan::HostText text(host);
    const std::optional<scan::Pattern> typed = scan::PatternForCompletion(text, caret, caret);
    if (!typed)
        return;

    // Does not check the sources' dates: completion never rebuilds tags.
    Tags tags(&localTags, &systemTags, typed->text, false);
    Completions completions(tags);
    const Suggestion suggestion = SuggestionFor(text, *typed, completions);
    switch (suggestion.action) {
    case Suggestion::Action::Insert:
        return InsertAtCaret(host, caret, suggestion.text);
    case Suggestion::Action::Replace:
        return ReplaceWord(host, suggestion.text);
    case Suggestion::Action::Offer:
        return OfferCompletions(host, tags, completions, selection.start);
    case Suggestion::Action::Nothing:
        return beep(); // no candidate, or the typed one only
    }
}

void SelectionAutoSuggestCompletions(PluginInterface* host)
{
    // Never offers to make tags: the user did not ask. An open window stays.
    BEntry localTags;
    BEntry systemTags;
    if (!FindTags(host, localTags, systemTags))
        return;
    const long offset = SelectionOf(host).start;
    Selection selection = SelectionOf(host);
    std::string pattern;
    if (!ScanForSuggestionPattern(host, selection.start, selection.end, selection.start, selection.end, pattern,
                                  true) ||
        pattern.length() < kShortestTyped) {
        CloseAnyPalettes();
        return;
    }
    Tags tags(&localTags, &systemTags, pattern, false);
    if (!Cache().LoadIfNeeded(tags, true))
        return; // the window stays until the names are loaded
    const std::vector<std::string> names = CandidatesWhileTyping(Cache(), pattern);
    if (names.empty())
        CloseAnyPalettes();
    else
        ShowCandidates(host, tags, names, offset);
}

void CompletionSelected(PluginInterface* host, const BMessage* message)
{
    const char* completion;
    if (message->FindString("completion", &completion) == B_OK)
        ReplaceWord(host, completion);
}
