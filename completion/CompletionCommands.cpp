#include "completion/CompletionCommands.h"

#include "completion/AutoCompletionPopulator.h"
#include "completion/CompletionWindow.h"
#include "completion/Completions.h"
#include "completion/Palettes.h"
#include "plugin/PluginInterface.h"
#include "scan/HostText.h"
#include "scan/Predicates.h"
#include "scan/SelectionScanner.h"
#include "tags/CompletionCache.h"
#include "tags/TagDiscovery.h"
#include "tags/Tags.h"
#include "vetch/display/Display.h"
#include "vetch/storage/BEntry.h"

namespace {

constexpr size_t kShortestPattern = 3;
constexpr unsigned long kTooMany = 200; // for a list that is shown without being asked for

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

bool ContinuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; // in UTF-8
}

// What all candidates begin with, in whole characters: two that are told apart only by their second bytes have none in
// common.
std::string CommonBeginning(const Completions& completions)
{
    std::string common;
    completions.CommonSubstring(common);
    if (common.empty())
        return common;
    const std::string& any = completions.Strings().front();
    while (!common.empty() && common.length() < any.length() && ContinuesCharacter(any[common.length()]))
        common.pop_back();
    return common;
}

// A pattern is without a leading "std::" that stands in the document all the same.
bool FollowsStd(PluginInterface* host, long start)
{
    const std::string scope = "std::";
    return scan::HostText(host).Range(start - static_cast<long>(scope.length()), start) == scope;
}

// Whether what the candidates have in common goes on where the pattern ends. They come with their scopes, and the
// pattern may be without: to insert the end of "std::vector" behind "vec" would spoil the text, as it would to put a
// scope behind "std::s".
bool GoesOn(PluginInterface* host, long start, const std::string& pattern, const std::string& common)
{
    return BeginsWith(common, pattern) && !(IsCppPattern(common.substr(pattern.length())) && FollowsStd(host, start));
}

// At the caret, behind a selection's end: what is selected stays. As it stands in the candidates, without room for a
// selector's arguments: they may agree on a part of it only, and the user goes on from there.
void InsertAtCaret(PluginInterface* host, long caret, const std::string& text)
{
    const long length = static_cast<long>(text.length());
    host->BeginUndo(caret, caret, "Insert symbol completion");
    host->InsertText(text.c_str(), length, caret);
    host->Select(caret + length, caret + length);
}

// In a window of its own: the palettes have been closed, so there is no other.
void OfferCompletions(PluginInterface* host, Tags& tags, Completions& completions, long offset)
{
    auto* window = new CompletionWindow(host, host->documentID);
    window->PopulateList(completions, tags, &Completions::Populate);
    window->ShowAt(host, offset);
}

// Made at the first key stroke that completes, and kept: the names of the last documents are likely those of the next.
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

    // Without a look at the sources' dates: completing never has tags made anew.
    Tags tags(&localTags, &systemTags, pattern, false);
    Completions completions(tags);
    const std::string common = CommonBeginning(completions);
    const bool goesOn = GoesOn(host, start, pattern, common);
    if (goesOn && common.length() > pattern.length())
        InsertAtCaret(host, caret, common.substr(pattern.length()));
    else if (completions.Size() == 1 && !goesOn)
        ReplaceWord(host, completions.Strings().front());
    else if (completions.Size() < 2)
        beep(); // there is none, or the one that is typed already
    else
        OfferCompletions(host, tags, completions, selection.start);
}

void SelectionAutoSuggestCompletions(PluginInterface* host)
{
    // Never offers to make tags: nobody has asked for anything. What is open stays as it is.
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
        return; // the window stays as it is until the names are there
    std::vector<std::string> names;
    Cache().GetCompletions(pattern.c_str(), names, kTooMany);
    if (names.size() == 1 && names.front() == pattern)
        names.clear(); // typed in full
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
