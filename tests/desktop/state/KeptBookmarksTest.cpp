#include "wren/desktop/state/KeptBookmarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr const char* kBefore = "int a;\nint b;\n\nint c;\nint d;\n";

std::string Lines(long count)
{
    std::string text;
    for (long line = 0; line < count; ++line)
        text += "// " + std::to_string(line) + "\n";
    return text;
}

} // namespace

TEST(KeptBookmarks, AreFoundInTheTextAsItIsNow)
{
    const struct {
        const char* why;
        std::vector<long> marked;
        std::string after;
        std::vector<long> found;
    } kCases[] = {
        {"nothing changed", {0, 3}, kBefore, {0, 3}},
        {"lines came before", {1, 3}, std::string("// new\n// new\n") + kBefore, {3, 5}},
        {"lines went", {3}, "int c;\nint d;\n", {0}},
        {"a line between moved only the later one", {0, 4}, "int a;\n// new\nint b;\n\nint c;\nint d;\n", {0, 5}},
        {"another indentation", {1}, "// new\n\tint b; \n", {1}},
        {"other line ends", {1, 4}, "int a;\r\nint b;\r\n\r\nint c;\r\nint d;\r\n", {1, 4}},
        {"the old Macintosh's", {4}, "int a;\rint b;\r\rint c;\rint d;\r", {4}},
        {"the marked line changed: its number counts", {1}, "int a;\nlong b;\n", {1}},
        {"a blank line goes along with the one before", {1, 2}, std::string("// new\n") + kBefore, {2, 3}},
        {"of two with the words, the nearest", {3}, "int c;\n\n\n\nint c;\n", {4}},
        {"the text has become too short", {0, 4}, "int a;\n", {0}},
        {"nothing is left", {4}, "", {}},
        {"two become one", {0, 1}, "int b;", {0}},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::LinesOf(wren::BookmarksIn(kBefore, each.marked), each.after), each.found) << each.why;
}

TEST(KeptBookmarks, MoveFarOnlyAlongWithOthers)
{
    const std::string text = Lines(1000);
    const std::vector<wren::KeptBookmark> one = wren::BookmarksIn(text, {900});
    EXPECT_THAT(wren::LinesOf(one, Lines(300) + text), ElementsAre(1200));
    EXPECT_THAT(wren::LinesOf(one, std::string(600, '\n') + text), ElementsAre(900)) << "too far away";
    std::string grown = text;
    grown.insert(grown.find("// 100\n"), std::string(400, '\n'));
    grown.insert(grown.find("// 800\n"), std::string(400, '\n'));
    EXPECT_THAT(wren::LinesOf(wren::BookmarksIn(text, {200, 900}), grown), ElementsAre(600, 1700));
}

TEST(KeptBookmarks, HoldNoText)
{
    const std::vector<wren::KeptBookmark> kept = wren::BookmarksIn("secret\n\n", {0, 1, 2, 3, -1});
    ASSERT_EQ(kept.size(), 3u) << "the text has three lines";
    EXPECT_EQ(kept[0].sign.size(), 16u);
    EXPECT_EQ(kept[0].sign.find("secret"), std::string::npos);
    EXPECT_EQ(kept[1].sign, "");
    EXPECT_THAT(wren::BookmarksIn("secret", {}), IsEmpty());
}
