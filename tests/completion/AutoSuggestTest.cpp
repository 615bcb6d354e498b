// Completion while typing: the list opens, is filled anew, moves and closes, and the text stays as it is.
#include "tests/completion/CompletionTest.h"

#include <gmock/gmock.h>

namespace {

using testing::IsEmpty;
using testing::StartsWith;

struct Case {
    const char* why;
    Lines tags;
    const char* document;
    Lines listed;
};

const Lines kStrings = {"NSStream", "NSString", "NSStringEncoding"};

const Case kCases[] = {
    {"candidates of three letters", kStrings, "x = NSS|;", kStrings},
    {"of more", kStrings, "x = NSStri|;", {"NSString", "NSStringEncoding"}},
    {"two letters are too few", kStrings, "x = NS|;", {}},
    {"one letter", kStrings, "x = N|;", {}},
    {"no pattern", kStrings, "x = |;", {}},
    {"none begins so", kStrings, "x = NSStro|;", {}},
    {"the only one is typed in full", kStrings, "x = NSStringEncoding|;", {}},
    {"one of two is typed in full", kStrings, "x = NSString|;", {"NSString", "NSStringEncoding"}},
    {"the only one is not typed in full", kStrings, "x = NSStrea|;", {"NSStream"}},
    {"case counts", kStrings, "x = nsstr|;", {}},
    {"what is right of the caret does not matter", kStrings, "x = NSStrea|XYZ;", {"NSStream"}},

    {"std:: is not part of what was typed", {"abc", "std::abcd"}, "std::ab|", {}},
    {"three letters behind it are", {"abc", "std::abcd"}, "std::abc|", {"abc", "abcd"}},
    {"bare names without a scope", {"A::name", "B::name", "B::names"}, "x = nam|;", {"name", "names"}},
    {"full names with one", {"A::name", "B::name", "B::names"}, "x = B::nam|;", {"B::name", "B::names"}},
    {"a scope counts among the letters", {"B::n", "B::no"}, "x = B::n|;", {"B::n", "B::no"}},
    {"of outer scopes as well", {"A::B::name", "B::name"}, "x = B::name|;", {"A::B::name", "B::name"}},
    {"the only one is typed in full with its scope", {"B::name"}, "x = B::name|;", {}},
    {"with another scope it is not", {"A::B::name"}, "x = B::name|;", {"A::B::name"}},
    {"a bare name for several scopes is one, typed in full", {"A::name", "B::name"}, "x = name|;", {}},

    {"a selector's next piece", {"setAll:", "setAll:to:"}, "[a setAll:b t|];", {"setAll:to:"}},
    {"a selector's first", {"setAll:", "setAll:to:"}, "[a set|];", {"setAll:", "setAll:to:"}},
    {"a selector that is typed in full", {"setAll:"}, "[a setAll:|];", {}},

    {"a selection is part of the pattern", kStrings, "x = [[NSStrea]];", {"NSStream"}},
    {"up to its end", kStrings, "x = N[[SStrea]]k;", {"NSStream"}},
    {"one that begins outside the name", kStrings, "x [[= NSStrea]];", {}},
    {"one of several lines", kStrings, "x;[[\nNSStrea]];", {}},
};

class AutoSuggestTest : public CompletionTest {
protected:
    static constexpr char kOpening[] = "x = NSS|;";

    // The list of kStrings is open.
    void OpenList()
    {
        UseLocalNames(kStrings);
        LoadNames();
        AutoSuggest(kOpening);
        ASSERT_EQ(Candidates(), kStrings);
    }
};

TEST_F(AutoSuggestTest, Cases)
{
    for (const Case& row : kCases) {
        UseLocalNames(row.tags);
        LoadNames();
        AutoSuggest(row.document);
        EXPECT_EQ(Candidates(), row.listed) << row.why;
        framework.QuitWindows();
    }
    EXPECT_EQ(Beeps(), 0) << "nobody has asked";
    EXPECT_EQ(witness.alerts, 0);
}

TEST_F(AutoSuggestTest, ClosesAnOpenListWhereItWouldNotOpenOne)
{
    for (const Case& row : kCases) {
        OpenList();
        UseLocalNames(row.tags);
        AutoSuggest(kOpening); // begins to load the new names
        JoinThreads();
        ASSERT_EQ(Candidates(), kStrings);
        AutoSuggest(row.document);
        EXPECT_EQ(Candidates(), row.listed) << row.why;
        framework.QuitWindows();
    }
}

TEST_F(AutoSuggestTest, NeverTouchesTheText)
{
    for (const Case& row : kCases) {
        UseLocalNames(row.tags);
        LoadNames();
        host.log.clear();
        AutoSuggest(row.document);
        EXPECT_THAT(host.log, IsEmpty()) << row.why;
        EXPECT_EQ(host.Marked(), row.document) << row.why;
        framework.QuitWindows();
    }
}

TEST_F(AutoSuggestTest, ListsFewerThanTwoHundredNames)
{
    for (const int count : {198, 199, 200, 201, 250, 1200}) {
        UseLocalNames(Numbered("name", count));
        LoadNames();
        AutoSuggest("x = name|;");
        EXPECT_EQ(Candidates(), count < 200 ? Numbered("name", count) : Lines{}) << count;
    }
}

TEST_F(AutoSuggestTest, CountsNamesOfBothFilesOnce)
{
    UseLocalNames(Numbered("name", 199));
    UseSystemNames(Numbered("name", 199));
    LoadNames();
    AutoSuggest("x = name|;");
    EXPECT_EQ(Candidates().size(), 199u);
    UseSystemNames({"name_too"});
    LoadNames();
    AutoSuggest("x = name|;");
    EXPECT_FALSE(Shown());
}

TEST_F(AutoSuggestTest, ListsTheNamesOfBothFilesInTheOrderOfBytes)
{
    UseLocalNames({"abcB", "abc_", "abca"});
    UseSystemNames({"abc\xc3\xa9", "abcA", "abca"});
    LoadNames();
    AutoSuggest("abc|");
    EXPECT_EQ(Candidates(), (Lines{"abcA", "abcB", "abc_", "abca", "abc\xc3\xa9"}));
    EXPECT_EQ(Shown()->list->selected, 0);
}

TEST_F(AutoSuggestTest, OpensAtTheStartOfTheSelection)
{
    UseLocalNames(kStrings);
    LoadNames();
    AutoSuggest("x = N[[SStr]];");
    ASSERT_TRUE(Shown());
    EXPECT_EQ(Shown()->frame.left, 48 + 7 * 5);
    EXPECT_EQ(Shown()->frame.top, 96 + 16);
}

TEST_F(AutoSuggestTest, RefillsAndMovesTheWindowThatIsOpen)
{
    OpenList();
    const auto before = *Shown();
    const int asked = host.pointsAsked;
    AutoSuggest("x = NSStri|;");
    ASSERT_TRUE(Shown());
    EXPECT_EQ(Shown()->number, before.number);
    EXPECT_EQ(Candidates(), (Lines{"NSString", "NSStringEncoding"}));
    EXPECT_EQ(Shown()->list->selected, 0);
    EXPECT_EQ(Shown()->frame.left, before.frame.left) << "it stands still while its user types";
    EXPECT_EQ(host.pointsAsked, asked + 1) << "but is placed again";
}

TEST_F(AutoSuggestTest, ARefillSelectsTheFirstAgainAndLeavesTheFocus)
{
    OpenList();
    CompletionWindow::gCompletionWindow->SetFocus(true);
    BMessage down(B_KEY_DOWN);
    down.AddInt8("byte", B_DOWN_ARROW);
    down.AddInt32("modifiers", 0);
    Call([&] { CompletionWindow::RouteKeyboardEventIfNeeded(&host, &down); });
    ASSERT_EQ(Shown()->list->selected, 1);
    AutoSuggest("x = NSStr|;");
    EXPECT_EQ(Shown()->list->selected, 0);
    EXPECT_EQ(Shown()->list->colour, (rgb_color{180, 200, 240, 255}));
}

TEST_F(AutoSuggestTest, RefillsTheListThatTheCommandOpened)
{
    UseLocalNames(kStrings);
    LoadNames();
    Suggest("NSStr|");
    const long number = Shown()->number;
    AutoSuggest("NSStrin|");
    EXPECT_EQ(Shown()->number, number);
    EXPECT_EQ(Candidates(), (Lines{"NSString", "NSStringEncoding"}));
}

TEST_F(AutoSuggestTest, ANewListBelongsToTheDocumentOfTheCall)
{
    UseLocalNames(kStrings);
    LoadNames();
    host.documentID = 12;
    AutoSuggest(kOpening);
    host.documentID = 13;
    ASSERT_TRUE(framework.display.InvokeItem(Shown()->number, 1));
    framework.Settle();
    ASSERT_EQ(framework.application->toDocuments.size(), 1u);
    EXPECT_EQ(framework.application->toDocuments[0].documentID, 12);
}

TEST_F(AutoSuggestTest, TheListStaysUnchangedWhileNamesLoad)
{
    OpenList();
    HoldLocalTags();
    const auto before = *Shown();
    const int asked = host.pointsAsked;
    for (const char* typed : {"x = NSStr|;", "x = NSStri|;", "x = NSStro|;", "x = qqqqqq|;", "x = N[[SStr]];"}) {
        AutoSuggest(typed);
        ASSERT_EQ(Candidates(), kStrings) << typed;
        EXPECT_EQ(Shown()->frame, before.frame) << typed;
        EXPECT_EQ(Shown()->number, before.number) << typed;
    }
    EXPECT_EQ(host.pointsAsked, asked);
    WriteHeldTags(TagsOf({"NSStrong"}));
    EXPECT_EQ(Candidates(), kStrings) << "the end of a load changes nothing by itself";
    UseLocalNames({"NSStrong"});
    LoadNames();
    AutoSuggest("x = NSStr|;");
    EXPECT_EQ(Candidates(), Lines{"NSStrong"});
}

TEST_F(AutoSuggestTest, NothingOpensWhileNamesLoad)
{
    HoldLocalTags();
    AutoSuggest(kOpening);
    AutoSuggest(kOpening);
    EXPECT_FALSE(Shown());
    WriteHeldTags(TagsOf(kStrings));
    EXPECT_FALSE(Shown());
}

// Whether enough is typed is known without the names.
TEST_F(AutoSuggestTest, TooFewLettersCloseTheListEvenWhileNamesLoad)
{
    for (const char* typed : {"x = NS|;", "x = |;"}) {
        OpenList();
        HoldLocalTags();
        AutoSuggest(kOpening);
        ASSERT_TRUE(Shown());
        AutoSuggest(typed);
        EXPECT_FALSE(Shown()) << typed;
        WriteHeldTags("");
    }
}

TEST_F(AutoSuggestTest, MissingTagsLeaveTheListOpenAndAskNothing)
{
    OpenList();
    std::filesystem::remove(folder / "tags");
    std::filesystem::remove(Home() / "Library/Caches/SystemHeaderTags");
    for (const char* typed : {"x = NSStri|;", "x = NSStro|;", "x = NS|;", "x = |;"}) {
        AutoSuggest(typed);
        EXPECT_EQ(Candidates(), kStrings) << typed;
    }
    EXPECT_EQ(witness.alerts, 0);
    EXPECT_EQ(Beeps(), 0);
}

TEST_F(AutoSuggestTest, ReadsNoFileOnceTheNamesAreLoaded)
{
    OpenList();
    const time_t time = NewTime();
    SetTime(folder / "tags", time);
    LoadNames();
    folder.Write("tags", TagsOf({"NSStrangeness"}));
    SetTime(folder / "tags", time);
    AutoSuggest("x = NSStr|;");
    EXPECT_EQ(Candidates(), kStrings);
}

// A vanished file's names go on being offered, as long as there is another file to search.
TEST_F(AutoSuggestTest, KeepsTheNamesOfAVanishedLocalFile)
{
    OpenList();
    std::filesystem::remove(folder / "tags");
    AutoSuggest("x = NSStr|;");
    EXPECT_EQ(Candidates(), kStrings);
    const TempDirectory elsewhere;
    OpenDocument(elsewhere);
    AutoSuggest("x = NSStri|;");
    EXPECT_EQ(Candidates(), (Lines{"NSString", "NSStringEncoding"})) << "even in a document that never had it";
}

TEST_F(AutoSuggestTest, LoadsAnotherDocumentsTagsAtItsFirstKey)
{
    OpenList();
    const TempDirectory elsewhere;
    SetTime(elsewhere.Write("tags", TagsOf({"NSStrong"})), 1000); // however old
    OpenDocument(elsewhere);
    AutoSuggest("x = NSStr|;");
    EXPECT_EQ(Candidates(), kStrings) << "not yet";
    JoinThreads();
    AutoSuggest("x = NSStr|;");
    EXPECT_EQ(Candidates(), Lines{"NSStrong"});
}

// A source that is all but empty and newer than its tags makes lookups have them made anew; typing does not.
TEST_F(AutoSuggestTest, NeverRebuildsTags)
{
    UseLocalNames({"NSString"});
    SetTime(folder.Write("a.cpp", ""), NewTime());
    LoadNames();
    testing::internal::CaptureStdout();
    AutoSuggest("NSStr|");
    Suggest("NSStr|");
    JoinThreads();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "no command was executed";
    EXPECT_EQ(host.Marked(), "NSString|");
}

} // namespace
