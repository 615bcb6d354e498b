#include "windows/SearchWindow.h"

#include "tags/FileNames.h"
#include "tags/TagData.h"
#include "tags/Tags.h"
#include "tagsfile/Kinds.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/Modifiers.h"
#include "windows/LookupItem.h"

#include <vector>

namespace {

constexpr uint32 kInvoked = FourCC("Look");
constexpr size_t kManyMatches = 40;

// The kinds of tags that a search lists.
struct MatchAny {
    static bool Accepts(char) { return true; }
};
struct MatchDefinitions {
    static bool Accepts(char kind) { return tagsfile::KindOf(kind).isDefinition; }
};
struct MatchDeclarations {
    static bool Accepts(char kind) { return !tagsfile::KindOf(kind).isDefinition; }
};

template <class Match>
std::vector<TagData> CollectMatches(Tags& tags)
{
    std::vector<TagData> matches;
    TagData match;
    // The files are sorted by name, so the first other name after a match ends the search. Matches of an unwanted kind
    // do not count: all names behind them are read.
    while (tags.NextMatch(match.name, match.qualifier, match.kind, match.file, match.line, match.fromSystemTags,
                          !matches.empty(), TagFile::ExactMatch())) {
        if (!Match::Accepts(match.kind))
            continue;
        matches.push_back(match);
        if (matches.size() > kManyMatches) // the match beyond the limit is listed too
            break;
    }
    tags.Done();
    return matches;
}

} // namespace

std::atomic<SearchWindow*> SearchWindow::gSearchWin = nullptr;

SearchWindow::SearchWindow() : TagWindow("Declaration", true, kInvoked)
{
    gSearchWin = this;
}

SearchWindow::~SearchWindow()
{
    gSearchWin = nullptr;
}

bool SearchWindow::PopulateSelf(Tags& tags)
{
    return PopulateList(*this, tags, &SearchWindow::GetAnySymbols);
}

bool SearchWindow::PopulateSelfWithDefinitions(Tags& tags)
{
    return PopulateList(*this, tags, &SearchWindow::GetDefinitions);
}

bool SearchWindow::PopulateSelfWithDeclarations(Tags& tags)
{
    return PopulateList(*this, tags, &SearchWindow::GetDeclarations);
}

void SearchWindow::GetAnySymbols(Tags& tags, BListView* into)
{
    GetSymbolsCommon<MatchAny>(tags, into);
}

void SearchWindow::GetDefinitions(Tags& tags, BListView* into)
{
    GetSymbolsCommon<MatchDefinitions>(tags, into);
}

void SearchWindow::GetDeclarations(Tags& tags, BListView* into)
{
    GetSymbolsCommon<MatchDeclarations>(tags, into);
}

template <class Match>
void SearchWindow::GetSymbolsCommon(Tags& tags, BListView* into)
{
    if (!tags.Rewind())
        return;
    const std::vector<TagData> matches = CollectMatches<Match>(tags);
    // One ambiguous name adds the directory to every entry, so that all entries look alike.
    const bool showDirectory = FileNamesAreAmbiguous(matches);
    for (const TagData& match : matches)
        into->AddItem(new LookupItem(match.name, match.qualifier, match.kind, match.line, match.file, showDirectory));
}

void SearchWindow::TagFromListItem(const BListItem* item, DeclarationEntry& entry)
{
    entry = DeclarationEntry();
    if (const auto* lookup = dynamic_cast<const LookupItem*>(item))
        entry = lookup->Entry();
}

void SearchWindow::GetTagEntryAt(DeclarationEntry& entry, long index) const
{
    TagFromListItem(List()->ItemAt(index), entry);
}

void SearchWindow::InvokeAtIndexWithMessage(long index, BMessage& message)
{
    DeclarationEntry entry;
    GetTagEntryAt(entry, index);
    message.AddRef("refs", &entry.file);
    message.AddInt32("be:line", entry.line);
    be_app->PostMessage(&message);
}

void SearchWindow::MessageReceived(BMessage* message)
{
    if (message->what == kInvoked)
        OpenEntry(*message);
    else
        BLooper::MessageReceived(message); // skips the window's handler: only quitting is left to handle
}

void SearchWindow::OpenEntry(const BMessage& invocation)
{
    int32 index = -1;
    if (invocation.FindInt32("index", &index) != B_OK || index < 0)
        return;
    BMessage open(B_REFS_RECEIVED);
    InvokeAtIndexWithMessage(index, open);
    PostMessage(B_QUIT_REQUESTED);
}
