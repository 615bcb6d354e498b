#include "scan/SelectionScanner.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Case {
    const char* why;
    const char* before;
    const char* completion;
    const char* after;
};

const Case kCases[] = {
    {"a plain name", "x = vec|;", "vector", "x = vector|;"},
    {"a name that begins the document", "vec|", "vector", "vector|"},
    {"what stands right of the caret stays", "x = vec|tor;", "vector", "x = vector|tor;"},
    {"a name that does not begin with what was typed", "x = VEC|;", "vector", "x = vector|;"},
    {"a scope in the document stays", "x = Outer::vec|;", "vector", "x = Outer::vector|;"},
    {"as do several", "x = Outer<int>::Inner::me|;", "member", "x = Outer<int>::Inner::member|;"},
    {"a scope in the completion is left away", "x = Outer::vec|;", "Outer::vector", "x = Outer::vector|;"},
    {"also when only the completion has one", "x = std::vec|;", "std::vector", "x = std::vector|;"},
    {"and the document has none at all", "x = vec|;", "std::vector", "x = vector|;"},
    {"all of them", "x = me|;", "Outer::Inner::member", "x = member|;"},
    {"a scope that nothing follows", "x = Outer::|;", "member", "x = Outer::member|;"},
    {"the other scope of the completion counts for nothing", "x = Outer::me|;", "Other::member", "x = Outer::member|;"},
    {"a piece of a selector for a plain name", "x = SET|;", "setObject:", "x = setObject:|;"},

    {"a selector for its beginning", "[a initWithF|];", "initWithFrame:style:", "[a initWithFrame: |style:];"},
    {"three pieces", "[a init|];", "initWith:and:or:", "[a initWith: |and: or:];"},
    {"the next piece", "[a initWithFrame:r sty|];", "initWithFrame:style:", "[a initWithFrame:r style:|];"},
    {"the pieces after the next", "[a initWithFrame:r sty|];",
     "initWithFrame:style:with:", "[a initWithFrame:r style: |with:];"},
    {"a selector that comes with its class", "[a setTitle:t for|];",
     "View::setTitle:forState:", "[a setTitle:t forState:|];"},
    {"several pieces of one", "[a initWithFrame:|];",
     "View::initWithFrame:style:with:", "[a initWithFrame:style: |with:];"},
    {"a class in a namespace", "[a setTitle:t for|];", "ui::View::setTitle:forState:", "[a setTitle:t forState:|];"},
    {"nothing missing of one", "[a setTitle:|];", "View::setTitle:", "[a setTitle:|];"},
    {"a selector of its own with two colons", "[a moveTo:|];", "moveTo::", "[a moveTo::|];"},
    {"nothing missing", "[a initWithFrame:r style:|];", "initWithFrame:style:", "[a initWithFrame:r style:|];"},
    {"a completion shorter than what was typed", "[a initWithFrame:r sty|];", "init:", "[a initWithFrame:r sty|];"},
    {"a selector that ends in no colon", "[a initWithFrame:r sty|];", "initWithFrame:style",
     "[a initWithFrame:r style|];"},
    {"one piece behind a colon", "b:|", "b:c", "b:c|"},
    {"as many characters as were typed, whichever", "[a XXXXXXXXX|];",
     "initWithFrame:style:", "[a XXXXXXXXXrame: |style:];"},

    {"an empty completion removes what was typed", "x = vec|;", "", "x = |;"},
    {"and leaves std:: where it is", "x = std::vec|;", "", "x = std::|;"},
    {"but takes other scopes along", "x = Outer::vec|;", "", "x = |;"},

    {"a selection is replaced up to its end", "x = s[[td::ve]]c;", "std::vector", "x = std::vector|c;"},
    {"nothing typed", "x = |;", "vector", "x = |;"},

    {"a selector that a scope got into is replaced as a name, where its last colon is", "[obj foo:a::b c|]", "bar::cd",
     "[obj foo:a::cd|b c]"},
    {"even where the scope is far from there", "[obj ab::bbbbbbbbbb foo:x c|]", "bar::cd",
     "[obj ab::bbbbbbbbbb foo:cd|x c]"},
    {"but without a scope in either, as many characters as it has are replaced in front of there",
     "[obj ab::bbbbbbbbbb foo:x c|]", "cd", "[obj ab::bbbbbbcd|x c]"},
};

TEST(ReplaceWord, Cases)
{
    for (const Case& c : kCases) {
        FakeHost host(c.before);
        ReplaceWord(&host, c.completion);
        EXPECT_EQ(host.Marked(), c.after) << c.why;
    }
}

TEST(ReplaceWord, IsOneUndoableEdit)
{
    FakeHost host("x = [[st]]d::vec;");
    host.selectionEnd = 12;
    ReplaceWord(&host, "std::vector");
    EXPECT_THAT(host.log, ElementsAre("BeginUndo 4 12 Insert symbol completion", "DeleteText 9 3",
                                      "InsertText vector 9", "Select 15 15"));
}

TEST(ReplaceWord, DeletesNothingOfASelector)
{
    FakeHost host("[a initWithF|];");
    ReplaceWord(&host, "initWithFrame:style:");
    EXPECT_THAT(host.log, ElementsAre("BeginUndo 12 12 Insert symbol completion", "DeleteText 12 0",
                                      "InsertText rame: style: 12", "Select 18 18"));
}

TEST(ReplaceWord, TakesAllStepsForAnEmptyCompletion)
{
    FakeHost host("x = vec|;");
    ReplaceWord(&host, "");
    EXPECT_THAT(host.log,
                ElementsAre("BeginUndo 7 7 Insert symbol completion", "DeleteText 4 3", "InsertText  4", "Select 4 4"));
}

// The host is told of an edit each time, so that each choice is a step that can be undone.
TEST(ReplaceWord, TakesAllStepsWhenNothingIsMissing)
{
    FakeHost host("[a setAll:|];");
    ReplaceWord(&host, "setAll:");
    EXPECT_THAT(host.log, ElementsAre("BeginUndo 10 10 Insert symbol completion", "DeleteText 10 0", "InsertText  10",
                                      "Select 10 10"));
}

// An empty completion stands for no selector, so it is not put in behind one: the range is taken away, whatever it
// says.
TEST(ReplaceWord, DeletesTheRangeOfASelectorForAnEmptyCompletion)
{
    FakeHost host("[object set:x to:y|];");
    ReplaceWord(&host, "");
    EXPECT_THAT(host.log, ElementsAre("BeginUndo 18 18 Insert symbol completion", "DeleteText 9 8", "InsertText  9",
                                      "Select 9 9"));
    EXPECT_EQ(host.Marked(), "[object s|y];");
}

// A selector's range is no place in the document, and may begin before it: no host could answer what stands there.
TEST(ReplaceWord, ReadsNothingOfASelectorsRange)
{
    struct ReadingHost : FakeHost {
        using FakeHost::FakeHost;
        void GetText(char* buffer, long offset, long length) override
        {
            EXPECT_GE(offset, 0);
            EXPECT_LE(offset + length, TextLength());
            ++reads;
            FakeHost::GetText(buffer, offset, length);
        }
        int reads = 0;
    };
    ReadingHost selector("[ab:cdefgh|");
    ReplaceWord(&selector, "ab:cdefghij:");
    EXPECT_EQ(selector.Marked(), "[ab:cdefghij:|");
    EXPECT_EQ(selector.reads, 0);
    ReadingHost name("x = vec|");
    ReplaceWord(&name, "vector");
    EXPECT_GT(name.reads, 0) << "a name is read where it stands";
}

TEST(ReplaceWord, DoesNothingWithoutAPattern)
{
    FakeHost host("x = |;");
    ReplaceWord(&host, "vector");
    EXPECT_THAT(host.log, IsEmpty()) << "not even an undo step";
}

} // namespace
