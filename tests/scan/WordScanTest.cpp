#include "scan/SelectionScanner.h"

#include "scan/WordScan.h"
#include "tests/scan/CountingHost.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

namespace {

struct WordCase {
    const char* why;
    const char* document;
    const char* word; // null: there is none
};
const WordCase kWordCases[] = {
    {"a caret in a word", "x = foo|_bar;", "foo_bar"},
    {"a caret before it", "x = |foo_bar;", "foo_bar"},
    {"a caret behind it", "x = foo_bar|;", "foo_bar"},
    {"a selected word", "x = [[foo_bar]];", "foo_bar"},
    {"a selected piece of one", "x = fo[[o_b]]ar;", "foo_bar"},
    {"a word that begins the document", "foo| bar", "foo"},
    {"with the caret at the very beginning", "|foo bar", "foo"},
    {"a document of one letter", "x|", "x"},
    {"a word that ends the document", "bar foo|", "foo"},
    {"a scope belongs to the word", "std::str|ing s;", "std::string"},
    {"a single colon does too", "NSStr|ing:", "NSString:"},
    {"even a colon alone", "a ? b :| c", ":"},
    {"no word at the caret", "x = | foo;", nullptr},
    {"an empty document", "|", nullptr},
    {"two words selected", "[[ab cd]]", nullptr},
    {"a selection that begins outside the word", "x [[= foo]];", nullptr},
    {"a selection that ends outside the word", "[[foo ]]= x;", nullptr},
    {"that touches the next word at its end", "[[foo ]]bar", nullptr},
    {"a selection that spans lines", "foo[[\n]]bar", nullptr},
    {"bytes beyond ASCII end a word", "caf\xC3\xA9z|z", "zz"},
};

TEST(ScanForWord, Cases)
{
    for (const WordCase& c : kWordCases) {
        FakeHost host(c.document);
        std::string word = "left over";
        const bool found = ScanForWord(&host, host.selectionStart, host.selectionEnd, word);
        EXPECT_EQ(found, c.word != nullptr) << c.why;
        EXPECT_EQ(word, c.word == nullptr ? "" : c.word) << c.why;
    }
}

TEST(ScanForWord, LimitsTheSelection)
{
    FakeHost host(std::string(2000, 'a'));
    std::string word;
    EXPECT_TRUE(ScanForWord(&host, 0, 1024, word));
    EXPECT_FALSE(ScanForWord(&host, 0, 1025, word));
    EXPECT_EQ(word, "");
}

TEST(ScanForWord, DoesNotLimitTheWord)
{
    const std::string longName(5000, 'a');
    FakeHost host("x = " + longName + "| + 1");
    std::string word;
    EXPECT_TRUE(ScanForWord(&host, host.selectionStart, host.selectionEnd, word));
    EXPECT_EQ(word, longName) << "generated names are longer than 1023 characters";
}

TEST(ScanForWord, LooksAroundTheSelectionsEnd)
{
    FakeHost host("foo bar");
    std::string word;
    EXPECT_TRUE(ScanForWord(&host, 5, 5, word));
    EXPECT_EQ(word, "bar");
    EXPECT_FALSE(ScanForWord(&host, 1, 5, word)) << "the word at the end does not cover the start";
}

struct PatternCase {
    const char* why;
    const char* document;
    bool found;
    long caret;
    long start;
    long length;
};
const PatternCase kPatternCases[] = {
    {"behind a word", "x = foo|;", true, 7, 4, 3},
    {"behind a word at the end", " foo|", true, 4, 1, 3},
    {"colons belong to it", " std::vec|", true, 9, 1, 8},
    {"a word that begins the document", "abc|", true, 3, -1, 4},
    {"one letter that begins the document", "a| b", true, 1, -1, 2},
    {"the beginning of an empty document", "|", true, 0, -1, 1},
    {"the beginning before a blank", "| foo", true, 0, -1, 1},
    {"the beginning before a word", "|foo", false, 0, 0, 0},
    {"in a word", " fo|o", false, 0, 0, 0},
    {"before a word", " |foo", false, 0, 0, 0},
    {"before a colon", " foo|:", false, 0, 0, 0},
    {"behind a blank", " foo |", false, 0, 0, 0},
    {"between blanks", " foo | bar", false, 0, 0, 0},
    {"behind a bracket", "f(|)", false, 0, 0, 0},
    {"behind bytes beyond ASCII", "x = \xC3\xA9|", false, 0, 0, 0},
    {"a selected word", " [[foo]]", false, 0, 0, 0},
};

TEST(IsPatternBeforeSelection, Cases)
{
    for (const PatternCase& c : kPatternCases) {
        FakeHost host(c.document);
        long caret = 99, start = 99, length = 99;
        EXPECT_EQ(IsPatternBeforeSelection(&host, caret, start, length), c.found) << c.why;
        EXPECT_EQ(caret, c.caret) << c.why;
        EXPECT_EQ(start, c.start) << c.why;
        EXPECT_EQ(length, c.length) << c.why;
    }
}

TEST(IsPatternBeforeSelection, AcceptsWordsOfAnyLength)
{
    FakeHost host(" " + std::string(5000, 'a') + "|");
    long caret, start, length;
    EXPECT_TRUE(IsPatternBeforeSelection(&host, caret, start, length));
    EXPECT_EQ(length, 5000);
}

TEST(IsPatternBeforeSelection, ReadsTheLinesOfAnEmptySelection)
{
    CountingHost host(" foo|");
    host.everyOffsetIsALine = true;
    long caret, start, length;
    EXPECT_FALSE(IsPatternBeforeSelection(&host, caret, start, length)) << "the host's answer counts, whatever it is";
    EXPECT_EQ(host.reads, 0);
}

TEST(WordScanners, ReadOnlyTheWordAndItsNeighbours)
{
    const std::string filler(10000, ' ');
    CountingHost host(filler + "foo_bar|" + filler);
    std::string word;
    EXPECT_TRUE(ScanForWord(&host, host.selectionStart, host.selectionEnd, word));
    EXPECT_EQ(host.reads, 9);
    host.reads = 0;
    long caret, start, length;
    EXPECT_TRUE(IsPatternBeforeSelection(&host, caret, start, length));
    EXPECT_EQ(host.reads, 9);
}

struct GrowthCase {
    const char* why;
    scan::TypedWord before;
    scan::TypedWord now;
    bool grew;
    bool beganOrGrew;
};

const GrowthCase kGrowth[] = {
    {"a letter more", {5, 2, 3}, {6, 2, 4}, true, true},
    {"several letters more", {5, 2, 3}, {9, 2, 7}, true, true},
    {"the first letter", {0, 0, 0}, {3, 2, 1}, false, true},
    {"two letters at once where there was none", {0, 0, 0}, {4, 2, 2}, false, false},
    {"another word", {5, 2, 3}, {9, 6, 3}, false, false},
    {"a letter less", {5, 2, 3}, {4, 2, 2}, false, false},
    {"the same", {5, 2, 3}, {5, 2, 3}, false, false},
    {"no word any more", {5, 2, 3}, {0, 0, 0}, false, false},
    {"no word before or now", {0, 0, 0}, {0, 0, 0}, false, false},
};

TEST(TypedWord, GrowsWhenTheCaretMovesForwardInTheSameWord)
{
    for (const GrowthCase& row : kGrowth) {
        EXPECT_EQ(WordGrew(row.before, row.now), row.grew) << row.why;
        EXPECT_EQ(WordBeganOrGrew(row.before, row.now), row.beganOrGrew) << row.why;
    }
}

} // namespace
