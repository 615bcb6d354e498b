// What takes the place of matches.
#include "wren/search/Replacement.h"

#include <gtest/gtest.h>

namespace wren {

TEST(Replacements, HaveTheGroupsOfAnExpression)
{
    const struct {
        const char* expression;
        const char* with;
        const char* result; // of "get(a, bc)"
    } kCases[] = {
        {"(\\w+), (\\w+)", "$2, $1", "bc, a"},
        {"(\\w+), (\\w+)", "\\2\\1", "bca"},
        {"a", "[$0]", "[a]"},
        {"a|(x)", "<$1>", "<>"},
        {"a", "$7$$1\\\\0", "$1\\0"},
        {"a", "$x\\y$", "$x\\y$"},
        {"a", "1\\n\\t2", "1\r\n\t2"},
    };
    for (const auto& each : kCases) {
        const base::Result<TextPattern> pattern = TextPattern::Compile({each.expression, true});
        ASSERT_TRUE(pattern);
        TextPattern::Finder finder(*pattern);
        const std::string text = "get(a, bc)";
        ASSERT_TRUE(finder.Next(text, 0)) << each.expression;
        EXPECT_EQ(finder.Expanded(each.with, text, "\r\n"), each.result) << each.with;
    }
}

TEST(Replacements, AreDoneInOneText)
{
    EXPECT_EQ(WithReplacements("one two three", {{0, 3, "1"}, {4, 3, ""}, {13, 0, "!"}}), "1  three!");
    EXPECT_EQ(WithReplacements("", {}), "");
}

TEST(Replacements, KnowTheTextThatTheyWereFoundIn)
{
    FileReplacements found;
    found.textSize = 3;
    found.textHash = 0xe71fa2190541574bu; // of "abc"
    EXPECT_TRUE(IsTextOf(found, "abc"));
    EXPECT_FALSE(IsTextOf(found, "abd"));
    EXPECT_FALSE(IsTextOf(found, "abcd"));
}

TEST(Replacements, UseTheLineEndsOfTheText)
{
    EXPECT_EQ(LineEndOf("a\r\nb\n"), "\r\n");
    EXPECT_EQ(LineEndOf("a\nb\r\n"), "\n");
    EXPECT_EQ(LineEndOf("a\rb"), "\r");
    EXPECT_EQ(LineEndOf("a"), "\n");
}

TEST(Replacements, ShowTheLineAfterwards)
{
    FoundLine line;
    line.source = "int a = 1;";
    line.matchStart = 4;
    line.matchSize = 1;
    line.with = "beta";
    EXPECT_EQ(SourceAfter(line), "int beta = 1;");
}

} // namespace wren
