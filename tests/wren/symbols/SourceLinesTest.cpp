#include "wren/symbols/SourceLines.h"

#include <gtest/gtest.h>

namespace {

class SourceLines : public ::testing::Test {
protected:
    std::optional<std::string> Read(const std::string& path)
    {
        ++reads;
        return path == "gone" ? std::nullopt : std::optional(path == "other" ? "theirs" : text);
    }

    std::string text = "first\nsecond\r\nthird";
    int reads = 0;
    wren::SourceLines lines{[this](const std::string& path) { return Read(path); }};
};

} // namespace

TEST_F(SourceLines, ComeWithoutTheirLineBreaks)
{
    EXPECT_EQ(lines.Line("a", 1), "first");
    EXPECT_EQ(lines.Line("a", 2), "second");
    EXPECT_EQ(lines.Line("a", 3), "third");
}

TEST_F(SourceLines, AreEmptyOutsideOfTheText)
{
    EXPECT_EQ(lines.Line("a", 0), "");
    EXPECT_EQ(lines.Line("a", 4), "");
    EXPECT_EQ(lines.Line("gone", 1), "");
}

TEST_F(SourceLines, AreReadOncePerFile)
{
    for (const unsigned line : {1u, 3u, 2u})
        lines.Line("a", line);
    EXPECT_EQ(reads, 1);
    EXPECT_EQ(lines.Line("other", 1), "theirs");
    EXPECT_EQ(lines.Line("a", 1), "first");
}

TEST_F(SourceLines, AreCutBetweenCharacters)
{
    const std::string start(wren::SourceLines::kMost - 1, 'x');
    text = start + "\xc3\xa9 and more";
    EXPECT_EQ(lines.Line("a", 1), start);
}
