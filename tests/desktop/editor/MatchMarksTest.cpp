// The marks of matches, and of the name at the caret.
#include "wren/desktop/editor/MatchMarks.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/Occurrences.h"

#include <gtest/gtest.h>

#include <QScrollBar>
#include <QtTest/QTest>

#include <memory>

namespace wren {
namespace {

constexpr int kOfNames = 22; // of Scintilla's indicators
constexpr int kOfSearch = 23;
constexpr int kSelected = 24;

// '[' and ']' stand around each mark.
std::string WithMarks(const CodeView& view, int indicator)
{
    const ViewText text(view);
    std::string shown;
    bool was = false;
    for (long at = 0; at <= text.Length(); at++) {
        const bool is = at < text.Length() && text.Send(QsciScintillaBase::SCI_INDICATORVALUEAT, indicator, at) != 0;
        if (is != was)
            shown += is ? "[" : "]";
        was = is;
        shown += at < text.Length() ? std::string(1, text.CharAt(at)) : "";
    }
    return shown;
}

class MatchMarksTest : public testing::Test {
protected:
    void Open(const std::string& text)
    {
        view.SetLanguageFor("a.cpp");
        view.SetBytes(text);
        view.resize(600, 300);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    static std::string Lines(int count, const std::string& line)
    {
        std::string text;
        for (int n = 0; n < count; n++)
            text += line + "\n";
        return text;
    }

    CodeView view;
    Occurrences& occurrences = *new Occurrences(view); // a child
};

TEST_F(MatchMarksTest, AMatchHasItsNumber)
{
    Open("a b a b a");
    MatchMarks marks(view, MatchMarks::Of::Search);
    marks.SetSearch({"a"});
    EXPECT_TRUE(marks.IsComplete());
    EXPECT_EQ(marks.Count(), 3);
    EXPECT_EQ(marks.NumberOf({0, 1}), 1);
    EXPECT_EQ(marks.NumberOf({8, 9}), 3);
    EXPECT_EQ(marks.NumberOf({2, 3}), std::nullopt);
    EXPECT_EQ(marks.NumberOf({0, 2}), std::nullopt);
    EXPECT_EQ(WithMarks(view, kOfSearch), "[a] b [a] b [a]");
    marks.SetSearch({});
    EXPECT_EQ(WithMarks(view, kOfSearch), "a b a b a");
}

TEST_F(MatchMarksTest, TheSelectedMatchHasAMarkOfItsOwn)
{
    Open("ab ab ab");
    MatchMarks marks(view, MatchMarks::Of::Search);
    marks.SetSearch({"ab"});
    ViewText(view).Select(3, 5);
    EXPECT_TRUE(QTest::qWaitFor([this] { return WithMarks(view, kSelected) == "ab [ab] ab"; }));
    ViewText(view).Select(3, 4);
    EXPECT_TRUE(QTest::qWaitFor([this] { return WithMarks(view, kSelected) == "ab ab ab"; })) << "a part of one";
    ViewText(view).Select(6, 8);
    EXPECT_TRUE(QTest::qWaitFor([this] { return WithMarks(view, kSelected) == "ab ab [ab]"; }));
    marks.SetSearch({});
    EXPECT_EQ(WithMarks(view, kSelected), "ab ab ab");
}

// Matches that lie over the end of a slice are neither missed nor counted twice.
TEST_F(MatchMarksTest, SlicesFindWhatOneReadingFinds)
{
    struct Case {
        const char* why;
        std::string text;
        TextSearch search;
    };
    const Case cases[] = {
        {"plain", Lines(60'000, "abcabcabc"), {"cab"}},
        {"itself within it", std::string(300'001, 'a'), {"aa"}},
        {"over lines", Lines(60'000, "abc"), {"c\na"}},
        {"whole words", Lines(60'000, "ab abc ab"), {"ab", false, true, true}},
        {"expression", Lines(60'000, "a1 b2"), {"[ab]\\d", true}},
        {"ends of lines", Lines(60'000, "abcdef"), {"$", true}},
        {"one long line", std::string(300'000, 'a') + "b", {"a+b", true}},
    };
    for (const Case& c : cases) {
        Open(c.text);
        MatchMarks marks(view, MatchMarks::Of::Search);
        marks.SetSearch(c.search);
        ASSERT_TRUE(QTest::qWaitFor([&] { return marks.IsComplete(); })) << c.why;
        EXPECT_EQ(marks.Count(), view.Count(c.search, 1'000'000)) << c.why;
        EXPECT_GT(marks.Count(), 0) << c.why;
    }
}

TEST_F(MatchMarksTest, AChangeIsLookedAtInAPauseOfTyping)
{
    Open("a b a");
    MatchMarks marks(view, MatchMarks::Of::Search);
    marks.SetSearch({"a"});
    ViewText(view).Replace(0, 0, "x a ");
    EXPECT_EQ(marks.NumberOf({0, 1}), std::nullopt) << "places that are no longer true";
    EXPECT_TRUE(QTest::qWaitFor([&] { return marks.Count() == 3; }));
    EXPECT_EQ(WithMarks(view, kOfSearch), "x [a] [a] b [a]");
}

TEST_F(MatchMarksTest, OnlyWhatIsSeenIsMarkedAndScrollingMarksMore)
{
    Open(Lines(1000, "one two"));
    MatchMarks marks(view, MatchMarks::Of::Search);
    marks.SetSearch({"one"});
    const auto isMarked = [this](long line) {
        return ViewText(view).Send(QsciScintillaBase::SCI_INDICATORVALUEAT, kOfSearch, line * 8) != 0;
    };
    EXPECT_TRUE(isMarked(0));
    EXPECT_FALSE(isMarked(900));
    view.ShowFromLine(895);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isMarked(900); }));
    EXPECT_FALSE(isMarked(0));
}

TEST_F(MatchMarksTest, LinesOfMatchesAreShownAtTheScrollBar)
{
    Open("one\ntwo\none one\n" + Lines(500, "three") + "one");
    MatchMarks marks(view, MatchMarks::Of::Search);
    const auto* ticks = view.verticalScrollBar()->findChildren<QWidget*>("scrollTicks").last();
    EXPECT_FALSE(ticks->isVisible());
    marks.SetSearch({"one"});
    EXPECT_EQ(marks.Lines(), (std::vector<long>{0, 2, 503}));
    EXPECT_TRUE(ticks->isVisible());
    EXPECT_EQ(ticks->size(), view.verticalScrollBar()->size());
    marks.SetSearch({"four"});
    EXPECT_FALSE(ticks->isVisible());
}

TEST_F(MatchMarksTest, ManyLinesAreThinnedOut)
{
    Open(Lines(100'000, "a"));
    MatchMarks marks(view, MatchMarks::Of::Search);
    marks.SetSearch({"a"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return marks.IsComplete(); }));
    EXPECT_EQ(marks.Count(), 100'000);
    EXPECT_LE(marks.Lines().size(), 2001U);
    EXPECT_GE(marks.Lines().back(), 99'900);
}

TEST_F(MatchMarksTest, TheViewMayGoFirst)
{
    auto gone = std::make_unique<CodeView>();
    gone->SetBytes(Lines(100'000, "a"));
    auto* marks = new MatchMarks(*gone, MatchMarks::Of::Search);
    marks->SetSearch({"a"});
    EXPECT_FALSE(marks->IsComplete());
    const QPointer<MatchMarks> watched = marks;
    gone.reset();
    QCoreApplication::processEvents();
    EXPECT_TRUE(watched.isNull());
}

struct NameCase {
    const char* why;
    const char* text; // '|' is the caret
    const char* marks;
};

const NameCase kNames[] = {
    {"behind the name", "int one| = one + ones;", "int [one] = [one] + ones;"},
    {"within it", "int o|ne = ONE + one;", "int [one] = ONE + [one];"},
    {"a keyword", "in|t a; int b;", "int a; int b;"},
    {"a word of a comment", "// o|ne one\nint one;", "// one one\nint one;"},
    {"a number", "int a = 1|2 + 12;", "int a = 12 + 12;"},
    {"no name", "a = | a;", "a =  a;"},
};

TEST_F(MatchMarksTest, TheNameAtTheCaretIsMarkedEverywhere)
{
    for (const NameCase& c : kNames) {
        std::string text = c.text;
        const size_t caret = text.find('|');
        text.erase(caret, 1);
        Open(text);
        view.GoTo(static_cast<long>(caret));
        ViewText(view).Send(QsciScintillaBase::SCI_COLOURISE, 0, -1); // as drawing does
        occurrences.LookNow();
        EXPECT_EQ(WithMarks(view, kOfNames), c.marks) << c.why;
    }
}

TEST_F(MatchMarksTest, MarksOfNamesComeInAPauseOfTheCaretAndFollowIt)
{
    Open("int one = two + one;");
    view.GoTo(5);
    EXPECT_TRUE(QTest::qWaitFor([this] { return WithMarks(view, kOfNames) == "int [one] = two + [one];"; }));
    view.GoTo(11);
    EXPECT_TRUE(QTest::qWaitFor([this] { return WithMarks(view, kOfNames) == "int one = [two] + one;"; }));
}

} // namespace
} // namespace wren
