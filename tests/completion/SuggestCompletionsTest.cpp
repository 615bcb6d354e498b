// The explicit command: as far as the candidates agree it inserts, and lists them where they do not.
#include "tests/completion/CompletionTest.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Case {
    const char* why;
    Lines tags;
    const char* before;
    const char* after;
    Lines listed;
    long beeps;
};

const Lines kStrings = {"NSStream", "NSString", "NSStringEncoding"};

const Case kCases[] = {
    {"what all agree on is inserted", {"NSString", "NSStringEncoding"}, "x = NSStr|;", "x = NSString|;", {}, 0},
    {"and listed once nothing more is common",
     {"NSString", "NSStringEncoding"},
     "x = NSString|;",
     "x = NSString|;",
     {"NSString", "NSStringEncoding"},
     0},
    {"one candidate is inserted whole", {"unique"}, "x = un|;", "x = unique|;", {}, 0},
    {"after one letter as well", {"unique"}, "u|", "unique|", {}, 0},
    {"no candidate", {"other"}, "x = NSStr|;", "x = NSStr|;", {}, 1},
    {"one that is typed already", {"NSString"}, "x = NSString|;", "x = NSString|;", {}, 1},
    {"twice the same is one", {"NSString", "NSString"}, "x = NSString|;", "x = NSString|;", {}, 1},
    {"candidates that agree on what is typed", kStrings, "x = NSStr|;", "x = NSStr|;", kStrings, 0},
    {"case counts", {"nsString"}, "x = NSStr|;", "x = NSStr|;", {}, 1},
    {"what is right of the caret stays", {"NSString"}, "x = NSStr|ing;", "x = NSString|ing;", {}, 0},
    {"no pattern: nothing happens, not even a beep", {"NSString"}, "x = |;", "x = |;", {}, 0},
    {"nor in an empty document", {"NSString"}, "|", "|", {}, 0},

    {"a scope that is typed is part of what agrees", {"Outer::name"}, "Outer::na|", "Outer::name|", {}, 0},
    {"several in that scope", {"Outer::nameA", "Outer::nameB", "Other::nam"}, "Outer::na|", "Outer::name|", {}, 0},
    {"none in that scope", {"Other::name"}, "Outer::na|", "Outer::na|", {}, 1},

    {"one candidate with a scope that is not typed", {"std::vector"}, "x = vec|;", "x = vector|;", {}, 0},
    {"with an outer scope that is not typed", {"A::Outer::name"}, "x = Outer::na|;", "x = Outer::name|;", {}, 0},
    {"with template arguments in the text", {"Outer::name"}, "Outer<int>::na|", "Outer<int>::name|", {}, 0},
    {"also when it is typed in full: it is chosen again", {"std::vector"}, "x = vector|;", "x = vector|;", {}, 0},
    {"several in a scope that is not typed", {"A::bar", "A::baz"}, "x = ba|;", "x = ba|;", {"A::bar", "A::baz"}, 0},
    {"several that agree on nothing", {"bar", "B::bar"}, "x = ba|;", "x = ba|;", {"bar", "B::bar"}, 0},
    {"a scope that begins as what is typed is typed with it", {"vec::value"}, "x = v|;", "x = vec::value|;", {}, 0},
    {"as far as several agree", {"vec::vaa", "vec::vab"}, "x = v|;", "x = vec::va|;", {}, 0},

    {"std:: is not asked for, and stays", {"vector"}, "x = std::vec|;", "x = std::vector|;", {}, 0},
    {"and is not doubled", {"std::vector"}, "x = std::vec|;", "x = std::vector|;", {}, 0},
    {"several in it",
     {"std::vector", "std::vector_base"},
     "std::vec|",
     "std::vec|",
     {"std::vector", "std::vector_base"},
     0},
    {"a name that begins as std itself", {"std::sort"}, "x = std::s|;", "x = std::sort|;", {}, 0},
    {"all of std", {"std::std_name"}, "x = std::std|;", "x = std::std_name|;", {}, 0},
    {"another scope that begins so", {"static_scope::stop"}, "x = std::st|;", "x = std::stop|;", {}, 0},
    {"several names that begin so",
     {"std::stable_partition", "std::stable_sort"},
     "std::st|",
     "std::st|",
     {"std::stable_partition", "std::stable_sort"},
     0},
    {"several that agree on std:: alone",
     {"std::ranges::sort", "std::sort"},
     "std::s|",
     "std::s|",
     {"std::ranges::sort", "std::sort"},
     0},
    {"a scope in std that is typed", {"chrono::seconds"}, "std::chrono::sec|", "std::chrono::seconds|", {}, 0},
    {"without std:: in the text it is part of what they agree on", {"std::sort"}, "x = s|;", "x = std::sort|;", {}, 0},
    {"and it may be all of that", {"std::ranges::sort", "std::sort"}, "x = s|;", "x = std::|;", {}, 0},
    {"one that ends in std is another", {"std::sort"}, "x = s; xstd::s|", "x = s; xstd::s|", {}, 1},

    {"a selector gets no room for arguments",
     {"initWithFrame:style:"},
     "[a initWithF|];",
     "[a initWithFrame:style:|];",
     {},
     0},
    {"its next piece", {"initWithFrame:style:"}, "[a initWithFrame:r sty|];", "[a initWithFrame:r style:|];", {}, 0},
    {"a selector that is typed in full", {"setAll:"}, "[a setAll:|];", "[a setAll:|];", {}, 1},
    {"several selectors", {"setAll:", "setAll:to:"}, "[a setAll:|];", "[a setAll:|];", {"setAll:", "setAll:to:"}, 0},

    {"bytes from 0x80 are put in as they are", {"gr\xc3\xbc\xc3\x9f"}, "x = gr|;", "x = gr\xc3\xbc\xc3\x9f|;", {}, 0},
    {"of any encoding", {"gr\xfc\xdf"}, "x = gr|;", "x = gr\xfc\xdf|;", {}, 0},
    {"but no part of a character", {"gr\xc3\xa4s", "gr\xc3\xa4t", "gr\xc3\xbc\xc3\x9f"}, "x = g|;", "x = gr|;", {}, 0},
    {"not even when there is nothing else",
     {"gr\xe2\x82\xac", "gr\xe2\x82\xad", "gr\xe2\x82\xae"},
     "x = gr|;",
     "x = gr|;",
     {"gr\xe2\x82\xac", "gr\xe2\x82\xad", "gr\xe2\x82\xae"},
     0},
    {"whole ones that agree", {"gr\xc3\xa4s", "gr\xc3\xa4t"}, "x = gr|;", "x = gr\xc3\xa4|;", {}, 0},
    {"bytes that are not characters",
     {"ab\x80\x81", "ab\x80\x82"},
     "x = ab|;",
     "x = ab|;",
     {"ab\x80\x81", "ab\x80\x82"},
     0},

    {"the selection's end is the caret, and what is selected stays", {"NSString"}, "[[NSStr]];", "NSString|;", {}, 0},
    {"whatever it begins in", {"NSString"}, "x [[= NSStr]];", "x = NSString|;", {}, 0},
    {"even in another line", {"NSString"}, "a;[[\nb = NSStr]];", "a;\nb = NSString|;", {}, 0},
};

using SuggestCompletions = CompletionTest;

TEST_F(SuggestCompletions, Cases)
{
    for (const Case& row : kCases) {
        UseLocalNames(row.tags);
        const long beeps = Beeps();
        Suggest(row.before);
        EXPECT_EQ(host.Marked(), row.after) << row.why;
        EXPECT_EQ(Candidates(), row.listed) << row.why;
        EXPECT_EQ(Beeps() - beeps, row.beeps) << row.why;
        framework.QuitWindows();
    }
    EXPECT_EQ(witness.alerts, 0);
}

TEST_F(SuggestCompletions, InsertsTheCommonPartFirstAndListsCandidatesNext)
{
    UseLocalNames({"NSString", "NSStringEncoding"});
    Suggest("x = NSStr|;");
    EXPECT_EQ(host.Marked(), "x = NSString|;");
    EXPECT_FALSE(Shown());
    Suggest(host.Marked());
    EXPECT_EQ(host.Marked(), "x = NSString|;");
    EXPECT_EQ(Candidates(), (Lines{"NSString", "NSStringEncoding"}));
    EXPECT_EQ(Shown()->list->selected, 0);
}

TEST_F(SuggestCompletions, InsertsAtTheCaretInOneUndoableStep)
{
    UseLocalNames({"NSString"});
    Suggest("x = [[NSStr]];");
    EXPECT_THAT(host.log, ElementsAre("BeginUndo 9 9 Insert symbol completion", "InsertText ing 9", "Select 12 12"));
}

TEST_F(SuggestCompletions, AnotherScopesOnlyCandidateIsInserted)
{
    UseLocalNames({"std::vector"});
    Suggest("x [[= vec]];");
    EXPECT_THAT(host.log, ElementsAre("BeginUndo 2 7 Insert symbol completion", "DeleteText 4 3", "InsertText vector 4",
                                      "Select 10 10"));
}

TEST_F(SuggestCompletions, ListsWithoutTouchingTheText)
{
    UseLocalNames({"draw", "drawRect"});
    Suggest("x = [[draw]];");
    EXPECT_THAT(host.log, IsEmpty()) << "neither an edit nor an undo step";
    EXPECT_EQ(host.Marked(), "x = [[draw]];");
    ASSERT_TRUE(Shown());
    EXPECT_EQ(Shown()->frame.left, 48 + 7 * 4) << "it stands at the selection's start";
    EXPECT_EQ(Shown()->frame.top, 96 + 16);
}

TEST_F(SuggestCompletions, BeepsAndLeavesTheTextAlone)
{
    UseLocalNames({"draw"});
    Suggest("x = [[draw]];");
    EXPECT_EQ(Beeps(), 1);
    EXPECT_THAT(host.log, IsEmpty());
    EXPECT_EQ(host.Marked(), "x = [[draw]];");
}

TEST_F(SuggestCompletions, MakesAWindowEachTime)
{
    UseLocalNames({"draw", "drawRect"});
    Suggest("draw|");
    const long first = Shown()->number;
    Call([] { CloseAnyPalettes(); });
    Suggest("draw|");
    EXPECT_NE(Shown()->number, first);
}

// Whoever calls has closed what is open: a list that is there all the same is not filled anew.
TEST_F(SuggestCompletions, MakesAWindowEvenBesideAnother)
{
    UseLocalNames({"draw", "drawRect"});
    Suggest("draw|");
    const CompletionWindow* first = CompletionWindow::gCompletionWindow;
    Suggest("drawR|");
    EXPECT_EQ(CompletionWindow::gCompletionWindow, first) << "what needs no list makes none";
    UseLocalNames({"drop", "droplet"});
    Suggest("drop|");
    EXPECT_NE(CompletionWindow::gCompletionWindow, first);
    ASSERT_EQ(framework.VisibleWindows().size(), 2u);
    EXPECT_EQ(framework.VisibleWindows()[0].list->items, (Lines{"draw", "drawRect"}));
    EXPECT_EQ(framework.VisibleWindows()[1].list->items, (Lines{"drop", "droplet"}));
}

TEST_F(SuggestCompletions, TheListBelongsToTheDocumentOfTheCall)
{
    UseLocalNames({"draw", "drawRect"});
    host.documentID = 12;
    Suggest("draw|");
    host.documentID = 13;
    ASSERT_TRUE(framework.display.InvokeItem(Shown()->number, 1));
    framework.Settle();
    ASSERT_EQ(framework.application->toDocuments.size(), 1u);
    EXPECT_EQ(framework.application->toDocuments[0].documentID, 12);
}

TEST_F(SuggestCompletions, ListsTwoHundredAndAMoreEntry)
{
    for (const int count : {199, 200, 201, 250, 1200}) {
        UseLocalNames(Numbered("name", count));
        Suggest("name|");
        const int listed = std::min(count, 200);
        ASSERT_EQ(Candidates().size(), static_cast<size_t>(listed + (count > 200))) << count;
        EXPECT_EQ(Candidates()[listed - 1], Numbered("name", listed).back());
        EXPECT_EQ(Candidates().back() == "     ... more", count > 200) << count;
        EXPECT_EQ(Shown()->list->selected, 0);
        framework.QuitWindows();
    }
}

// The candidates behind the thousandth are never looked at, so it is not known that they agree no more.
TEST_F(SuggestCompletions, InsertsTheCommonPartOfTheFirstThousand)
{
    Lines names = Numbered("name_", 1000);
    names.push_back("nammer");
    UseLocalNames(names);
    Suggest("nam|");
    EXPECT_EQ(host.Marked(), "name_|");
}

TEST_F(SuggestCompletions, ReadsTheCurrentFiles)
{
    UseLocalNames({"draw"});
    Suggest("dr|");
    EXPECT_EQ(host.Marked(), "draw|");
    UseLocalTags(TagsOf({"drop"}));
    SetTime(folder / "tags", 1000); // older than what was read before: nothing is remembered
    Suggest("dr|");
    EXPECT_EQ(host.Marked(), "drop|");
}

TEST_F(SuggestCompletions, UsesTheSystemTagsAsWell)
{
    UseSystemNames({"NSString"});
    Suggest("NSStr|");
    EXPECT_EQ(host.Marked(), "NSString|");
    UseSystemNames({"NSObject", "NSString"});
    UseLocalNames({"NSStrong"});
    Suggest("NSStr|");
    EXPECT_EQ(host.Marked(), "NSStrong|") << "what is near hides what is far";
}

TEST_F(SuggestCompletions, OffersToMakeTagsWhenThereAreNone)
{
    std::filesystem::remove(Home() / "Library/Caches/SystemHeaderTags");
    framework.display.AnswerAlert(0);
    Suggest("NSStr|");
    EXPECT_EQ(witness.alerts, 1);
    EXPECT_EQ(Beeps(), 0);
    EXPECT_FALSE(Shown());
    EXPECT_EQ(host.Marked(), "NSStr|");
}

} // namespace
