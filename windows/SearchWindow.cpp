#include "windows/SearchWindow.h"

#include "tags/MatchText.h"
#include "tags/Matches.h"
#include "tags/Tags.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/Modifiers.h"
#include "vetch/storage/Home.h"

#include <vector>

namespace {

constexpr uint32 kInvoked = FourCC("Look");

void ListMatches(Tags& tags, WantedTags wanted, BListView* into)
{
    const std::vector<TagData> matches = CollectMatches(tags, wanted);
    const bool showDirectory = FileNamesAreAmbiguous(matches);
    for (const TagData& match : matches)
        into->AddItem(new LookupItem(match.name, match.qualifier, match.kind, match.line, match.file, showDirectory));
}

} // namespace

LookupItem::LookupItem(const std::string& name, const std::string& qualifier, char kind, int line, const EntryRef& file,
                       bool showDirectory)
    : BStringItem(""), entry{name, qualifier, file, line, kind}
{
    SetText(MatchText({name, qualifier, file, line, kind}, showDirectory, Home()).c_str());
}

LookupItem::~LookupItem() = default;

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
    ListMatches(tags, WantedTags::Any, into);
}

void SearchWindow::GetDefinitions(Tags& tags, BListView* into)
{
    ListMatches(tags, WantedTags::Definitions, into);
}

void SearchWindow::GetDeclarations(Tags& tags, BListView* into)
{
    ListMatches(tags, WantedTags::Declarations, into);
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
