#include "completion/CompletionCommands.h"

#include "base/Utf8.h"
#include "completion/AutoCompletionPopulator.h"
#include "completion/CompletionWindow.h"
#include "completion/Completions.h"
#include "completion/Palettes.h"
#include "plugin/PluginInterface.h"
#include "scan/HostText.h"
#include "scan/Predicates.h"
#include "scan/SelectionScanner.h"
#include "tags/Candidates.h"
#include "tags/CompletionCache.h"
#include "tags/TagDiscovery.h"
#include "tags/Tags.h"
#include "vetch/display/Display.h"
#include "vetch/storage/BEntry.h"

namespace {

constexpr size_t kShortestPattern = 3;
constexpr unsigned long kTooMany = 200; // for a list that the user did not request

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

bool BeginsWith(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.length(), beginning) == 0;
}

// A pattern is without a leading "std::" that stands in the document all the same.
bool FollowsStd(PluginInterface* host, long start)
{
    const std::string scope = "std::";
    return scan::HostText(host).Range(start - static_cast<long>(scope.length()), start) == scope;
}

// True when the common beginning can continue the pattern. Candidates have their scopes, and the pattern may not. To
// insert the end of "std::vector" behind "vec" would spoil the text, as would a scope behind "std::s".
bool GoesOn(PluginInterface* host, long start, const std::string& pattern, const std::string& common)
{
    return BeginsWith(common, pattern) && !(IsCppPattern(common.substr(pattern.length())) && FollowsStd(host, start));
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

void SelectionSuggestCompletions(PluginInterface* host)
{
    BEntry localTags;
    BEntry systemTags;
    if (!FindOrCreateTags(host, localTags, systemTags))
        return;
    const Selection selection = SelectionOf(host);
    const long caret = selection.end;
    long start;
    long end;
    std::string pattern;
    if (!ScanForSuggestionPattern(host, caret, caret, start, end, pattern, true))
        return;

    // Does not check the sources' dates: completion never rebuilds tags.
    Tags tags(&localTags, &systemTags, pattern, false);
    Completions completions(tags);
    const std::string common = CommonBeginning(completions);
    const bool goesOn = GoesOn(host, start, pattern, common);
    if (goesOn && common.length() > pattern.length())
        InsertAtCaret(host, caret, common.substr(pattern.length()));
    else if (completions.Size() == 1 && !goesOn)
        ReplaceWord(host, completions.Strings().front());
    else if (completions.Size() < 2)
        beep(); // no candidate, or the typed one only
    else
        OfferCompletions(host, tags, completions, selection.start);
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
        pattern.length() < kShortestPattern) {
        CloseAnyPalettes();
        return;
    }
    Tags tags(&localTags, &systemTags, pattern, false);
    if (!Cache().LoadIfNeeded(tags, true))
        return; // the window stays until the names are loaded
    std::vector<std::string> names;
    Cache().GetCompletions(pattern.c_str(), names, kTooMany);
    if (names.size() == 1 && names.front() == pattern)
        names.clear(); // fully typed
    if (!names.empty() && names.size() < kTooMany)
        ShowCandidates(host, tags, names, offset);
    else
        CloseAnyPalettes();
}

void CompletionSelected(PluginInterface* host, const BMessage* message)
{
    const char* completion;
    if (message->FindString("completion", &completion) == B_OK)
        ReplaceWord(host, completion);
}
