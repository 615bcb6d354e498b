// What becomes of the text when an entry is chosen.
#include "tests/completion/CompletionTest.h"

#include <gmock/gmock.h>

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
    {"the word is replaced", "x = vec|;", "vector", "x = vector|;"},
    {"of a chain of scopes the last part", "x = std::vec|;", "std::vector", "x = std::vector|;"},
    {"whatever scopes were chosen with it", "x = B::me|;", "A::B::member", "x = B::member|;"},
    {"of a selector the rest is put in, with room", "[a initWithF|];",
     "initWithFrame:style:", "[a initWithFrame: |style:];"},
    {"nothing typed any more: the document has changed", "x = |;", "vector", "x = |;"},
    {"something else typed by now", "x = yyy|;", "vector", "x = vector|;"},
    {"the document is empty by now", "|", "vector", "|"},
    {"the caret is behind the word by now", "vec |", "vector", "vec |"},
    {"bytes from 0x80 are put in as they are", "x = gru|;", "gru\xc3\x9f\xff", "x = gru\xc3\x9f\xff|;"},
    {"an entry without a text takes the word away", "x = vec|;", "", "x = |;"},
    {"a selection is replaced to its end", "x = v[[ec]]tor;", "value", "x = value|tor;"},
};

using CompletionSelectedTest = CompletionTest;

TEST_F(CompletionSelectedTest, Cases)
{
    for (const Case& row : kCases) {
        host.SetMarked(row.before);
        Choose(row.completion);
        EXPECT_EQ(host.Marked(), row.after) << row.why;
    }
    EXPECT_EQ(Beeps(), 0);
}

TEST_F(CompletionSelectedTest, IsOneUndoableStep)
{
    host.SetMarked("x = vec|;");
    Choose("vector");
    EXPECT_THAT(host.log, ElementsAre("BeginUndo 7 7 Insert symbol completion", "DeleteText 4 3", "InsertText vector 4",
                                      "Select 10 10"));
}

TEST_F(CompletionSelectedTest, DoesNothingWhereNothingIsTyped)
{
    host.SetMarked("x = |;");
    Choose("vector");
    EXPECT_THAT(host.log, IsEmpty()) << "not even an undo step";
}

TEST_F(CompletionSelectedTest, AMessageWithoutACompletionDoesNothing)
{
    host.SetMarked("x = vec|;");
    BMessage empty(FourCC("ksel"));
    BMessage otherType(FourCC("ksel"));
    otherType.AddInt32("completion", 1);
    BMessage otherName(FourCC("ksel"));
    otherName.AddString("Completion", "vector");
    for (const BMessage* message : {&empty, &otherType, &otherName})
        Call([&] { CompletionSelected(&host, message); });
    EXPECT_EQ(host.Marked(), "x = vec|;");
    EXPECT_THAT(host.log, IsEmpty());
}

// It asks nothing of the list, which may be gone by the time that the choice arrives.
TEST_F(CompletionSelectedTest, NeitherNeedsNorClosesAList)
{
    UseLocalNames({"vector", "vectors"});
    Suggest("vector|");
    ASSERT_TRUE(Shown());
    host.SetMarked("x = vec|;");
    Choose("vector");
    EXPECT_EQ(host.Marked(), "x = vector|;");
    EXPECT_EQ(Candidates(), (Lines{"vector", "vectors"}));
}

} // namespace
