#include "windows/SearchWindow.h"

#include "tags/Tags.h"
#include "tests/support/Framework.h"
#include "tests/support/TagLines.h"
#include "vetch/storage/BEntry.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;
using Opened = RecordingApplication::Opened;

class SearchWindowTest : public testing::Test {
protected:
    TempHome home;
    Framework framework;
    BEntry local;
    BEntry system;

    // Writes the local tags file and the source files that its lines name.
    void WriteTags(const std::string& lines)
    {
        WriteSources(lines);
        local.SetTo(home.Write("src/tags", lines).c_str());
    }
    void WriteSystemTags(const std::string& lines)
    {
        WriteSources(lines);
        system.SetTo(home.Write("src/system-tags", lines).c_str());
    }

    // A new search window, filled; null when nothing was found, the window is then gone.
    SearchWindow* Search(const std::string& symbol, bool (SearchWindow::*populate)(Tags&) = &SearchWindow::PopulateSelf)
    {
        Tags tags(&local, &system, symbol, false);
        auto* window = new SearchWindow;
        if ((window->*populate)(tags))
            return window;
        window->Quit();
        return nullptr;
    }
    Texts Listed() const { return framework.Windows().empty() ? Texts() : framework.Windows().back().list->items; }
    Texts Search(const std::string& symbol, bool (SearchWindow::*populate)(Tags&), const char* why)
    {
        SearchWindow* window = Search(symbol, populate);
        const Texts listed = Listed();
        EXPECT_EQ(window == nullptr, listed.empty()) << why;
        if (window != nullptr)
            window->Quit();
        return listed;
    }
    SearchWindow* ShowTwoMatches()
    {
        WriteTags(TagLine("draw", "view.h", 12, 'p') + TagLine("draw", "view.cpp", 34, 'f'));
        SearchWindow* window = Search("draw");
        window->ShowAt(BPoint{300, 200});
        framework.Settle();
        return window;
    }
    void SendLook(SearchWindow* window, std::optional<int32> index)
    {
        BMessage look(FourCC("Look"));
        if (index)
            look.AddInt32("index", *index);
        window->PostMessage(&look);
        framework.Settle();
    }
    std::string Source(const std::string& leaf) const { return home / ("src/" + leaf); }

private:
    void WriteSources(const std::string& lines)
    {
        std::istringstream stream(lines);
        for (std::string line; std::getline(stream, line);) {
            const size_t start = line.find('\t') + 1;
            home.Write("src/" + line.substr(start, line.find('\t', start) - start), "a source of more than nine bytes");
        }
    }
};

TEST_F(SearchWindowTest, IsAFloatingWindowCalledDeclaration)
{
    new SearchWindow;
    EXPECT_EQ(framework.Windows().at(0).title, "Declaration");
    EXPECT_EQ(framework.Windows().at(0).look, 6);
}

TEST_F(SearchWindowTest, ListsLocalMatchesFirstInTheOrderOfTheFiles)
{
    WriteTags(TagLine("draw", "view.h", 12, 'p', "class:View") + TagLine("draw", "a.cpp", 34, 'f', "class:View") +
              TagLine("other", "a.cpp", 1, 'f'));
    WriteSystemTags(TagLine("draw", "b.h", 5, 'd'));
    ASSERT_NE(Search("draw"), nullptr);
    // The first local match ends the search in the system's file at its first line with another name; here that is a
    // match.
    EXPECT_EQ(Listed(), (Texts{"View::draw - view.h", "View::draw - a.cpp", "draw - b.h"}));
}

TEST_F(SearchWindowTest, AnAcceptedLocalMatchHidesSystemMatchesAfterOtherNames)
{
    WriteTags(TagLine("draw", "view.h", 12, 'p'));
    WriteSystemTags(TagLine("about", "b.h", 5, 'f') + TagLine("draw", "b.h", 6, 'f'));
    ASSERT_NE(Search("draw"), nullptr);
    EXPECT_EQ(Listed(), Texts{"draw - view.h"});
}

TEST_F(SearchWindowTest, ListsTheKindsThatItIsAskedFor)
{
    WriteTags(TagLine("it", "a.h", 1, 'p') + TagLine("it", "a.cpp", 1, 'f'));
    EXPECT_EQ(Search("it", &SearchWindow::PopulateSelf, "all"), (Texts{"it - a.h", "it - a.cpp"}));
    EXPECT_EQ(Search("it", &SearchWindow::PopulateSelfWithDefinitions, "definitions"), Texts{"it - a.cpp"});
    EXPECT_EQ(Search("it", &SearchWindow::PopulateSelfWithDeclarations, "declarations"), Texts{"it - a.h"});
    WriteTags(TagLine("it", "a.h", 1, 'p'));
    EXPECT_EQ(Search("it", &SearchWindow::PopulateSelfWithDefinitions, "none of that kind"), Texts{});
}

TEST_F(SearchWindowTest, ListsOneMoreThanFortyMatches)
{
    std::string lines;
    Texts first;
    for (int i = 1; i <= 45; ++i) {
        const std::string file = "f" + std::to_string(100 - i) + ".h";
        lines += TagLine("many", file, i, 'p');
        if (i <= 41)
            first.push_back("many - " + file);
    }
    WriteTags(lines);
    ASSERT_NE(Search("many"), nullptr);
    EXPECT_EQ(Listed(), first);
}

TEST_F(SearchWindowTest, OneAmbiguousFileNameShowsEveryDirectory)
{
    WriteTags(TagLine("it", "one/util.h", 1, 'p') + TagLine("it", "view.h", 2, 's') +
              TagLine("it", "two/util.h", 3, 'p'));
    ASSERT_NE(Search("it"), nullptr);
    EXPECT_EQ(Listed(), (Texts{"it : util.h - ~/src/one", "struct it : view.h - ~/src", "it : util.h - ~/src/two"}));
}

TEST_F(SearchWindowTest, MatchesInOneFileShowNoDirectory)
{
    WriteTags(TagLine("it", "one/util.h", 1, 'p') + TagLine("it", "one/util.h", 2, 'p'));
    ASSERT_NE(Search("it"), nullptr);
    EXPECT_EQ(Listed(), (Texts{"it - util.h", "it - util.h"}));
}

TEST_F(SearchWindowTest, FindsNothingWithoutTagsFiles)
{
    EXPECT_EQ(Search("draw"), nullptr);
    EXPECT_TRUE(framework.Windows().empty());
}

TEST_F(SearchWindowTest, AnsweringAnEntryOpensItsFileAtItsLineAndClosesTheWindow)
{
    ShowTwoMatches();
    ASSERT_TRUE(framework.display.InvokeItem(framework.Windows().at(0).number, 1));
    framework.Settle();
    EXPECT_EQ(framework.application->opened, (std::vector<Opened>{{Source("view.cpp"), 34}}));
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
}

TEST_F(SearchWindowTest, AnInvocationWithoutAnIndexIsIgnored)
{
    SearchWindow* window = ShowTwoMatches();
    SendLook(window, std::nullopt);
    SendLook(window, -1);
    EXPECT_TRUE(framework.application->opened.empty());
    EXPECT_EQ(framework.VisibleWindows().size(), 1u);
}

TEST_F(SearchWindowTest, AnIndexWithoutAnEntryIsPostedWithAnEmptyReference)
{
    SearchWindow* window = ShowTwoMatches();
    SendLook(window, 2);
    EXPECT_EQ(framework.application->opened, (std::vector<Opened>{{"", 0}}));
    EXPECT_TRUE(framework.Windows().empty());
}

TEST_F(SearchWindowTest, AddsToTheGivenMessage)
{
    WriteTags(TagLine("draw", "view.h", 12, 'p'));
    SearchWindow* window = Search("draw");
    ASSERT_NE(window, nullptr);
    BMessage message(FourCC("Mine"));
    window->InvokeAtIndexWithMessage(0, message);
    EntryRef file;
    EXPECT_EQ(message.FindRef("refs", &file), B_OK);
    EXPECT_EQ(file.Path(), Source("view.h"));
    framework.Settle();
    EXPECT_EQ(framework.application->others, std::vector<uint32>{FourCC("Mine")});
}

TEST_F(SearchWindowTest, IgnoresOtherMessages)
{
    SearchWindow* window = ShowTwoMatches();
    window->PostMessage(FourCC("Pick"));
    framework.Settle();
    EXPECT_EQ(framework.VisibleWindows().size(), 1u);
    ASSERT_TRUE(framework.display.Close(framework.Windows().at(0).number));
    framework.Settle();
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
    EXPECT_TRUE(framework.application->opened.empty());
}

TEST_F(SearchWindowTest, ANewerWindowTakesTheGlobalWithoutClosingTheOlder)
{
    SearchWindow* older = ShowTwoMatches();
    EXPECT_EQ(SearchWindow::gSearchWin, older);
    SearchWindow* newer = ShowTwoMatches();
    EXPECT_EQ(SearchWindow::gSearchWin, newer);
    EXPECT_EQ(framework.VisibleWindows().size(), 2u);
}

TEST_F(SearchWindowTest, AnOlderWindowThatDiesClearsTheGlobalOfTheNewer)
{
    SearchWindow* older = ShowTwoMatches();
    ShowTwoMatches();
    older->Quit();
    EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
    EXPECT_EQ(framework.VisibleWindows().size(), 1u);
}

TEST_F(SearchWindowTest, OnlyLookupItemsGiveATag)
{
    DeclarationEntry entry;
    const LookupItem item("draw", "View", 'f', 12, EntryRef("/src/view.h"), false);
    SearchWindow::TagFromListItem(&item, entry);
    EXPECT_EQ(entry.name, "draw");
    EXPECT_EQ(entry.line, 12);

    const BStringItem plain("draw - view.h");
    const BListItem* const others[] = {nullptr, &plain};
    for (const BListItem* other : others) {
        SearchWindow::TagFromListItem(&item, entry);
        SearchWindow::TagFromListItem(other, entry);
        EXPECT_EQ(entry.name, "");
        EXPECT_EQ(entry.qualifier, "");
        EXPECT_EQ(entry.file.name, nullptr);
        EXPECT_EQ(entry.line, 0);
        EXPECT_EQ(entry.kind, 0);
    }
}

TEST_F(SearchWindowTest, GivesTheTagAtAnIndex)
{
    WriteTags(TagLine("draw", "view.h", 12, 'p', "class:View") + TagLine("draw", "view.cpp", 34, 'f'));
    const SearchWindow* window = Search("draw");
    ASSERT_NE(window, nullptr);
    DeclarationEntry entry;
    window->GetTagEntryAt(entry, 0);
    EXPECT_EQ(entry.qualifier, "View");
    EXPECT_EQ(entry.line, 12);
    window->GetTagEntryAt(entry, 1);
    EXPECT_EQ(entry.kind, 'f');
    EXPECT_EQ(entry.qualifier, "");
    for (const long missing : {-1L, 2L}) {
        entry.name = "old";
        window->GetTagEntryAt(entry, missing);
        EXPECT_EQ(entry.name, "") << missing;
    }
}

} // namespace
