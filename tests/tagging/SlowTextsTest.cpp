#include "tagging/SlowTexts.h"

#include <gtest/gtest.h>
#include <string>

namespace tagging {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

std::string Repeated(int count, const std::string& line = "int i;\n")
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += line;
    return text;
}

const SlowTexts::Clock::time_point kStart{};

TEST(SlowTexts, AreTriedAgainWhenTheyHaveChangedMuch)
{
    const std::string half = Repeated(50);
    const struct {
        const char* why;
        std::string text;
        bool isSlow;
    } kCases[] = {
        {"the same text", half + half, true},
        {"a typed letter", half + "x" + half, true},
        {"a few lines", half + Repeated(5) + half, true},
        {"as many other lines", half.substr(0, 7 * 45) + Repeated(5, "int j;\n") + half, true},
        {"many other lines", half + Repeated(50, "int j;\n"), false},
        {"many lines more", half + Repeated(22, "\n") + half, false},
        {"two distant changes", "x" + half + half + "x", false},
        {"a large part less", half + Repeated(20), false},
        {"nothing left", "", false},
    };
    for (const auto& each : kCases) {
        SlowTexts slow;
        slow.Add("a.c", half + half, kStart);
        EXPECT_EQ(slow.Has("a.c", each.text, kStart), each.isSlow) << each.why;
        EXPECT_FALSE(slow.Has("b.c", each.text, kStart)) << each.why;
    }
}

TEST(SlowTexts, AreTriedAgainAfterPausesThatGrow)
{
    SlowTexts slow;
    SlowTexts::Clock::time_point now = kStart;
    for (const int pause : {1, 2, 4, 8, 16, 32, 32}) {
        slow.Add("a.c", "int i;", now);
        EXPECT_TRUE(slow.Has("a.c", "int i;", now + minutes(pause) - seconds(1))) << pause;
        now += minutes(pause);
        EXPECT_FALSE(slow.Has("a.c", "int i;", now)) << pause;
    }
}

TEST(SlowTexts, AreForgottenWhenCtagsHasReadThem)
{
    SlowTexts slow;
    slow.Add("a.c", "int i;", kStart);
    slow.Add("a.c", "int i;", kStart);
    slow.Remove("a.c");
    EXPECT_FALSE(slow.Has("a.c", "int i;", kStart));
    slow.Add("a.c", "int i;", kStart);
    EXPECT_FALSE(slow.Has("a.c", "int i;", kStart + SlowTexts::kFirstPause));
}

TEST(SlowTexts, KeepsTheLatestOnes)
{
    SlowTexts slow;
    for (int i = 0; i < 100; ++i)
        slow.Add(std::to_string(i), "int i;", kStart + seconds(i));
    EXPECT_FALSE(slow.Has("0", "int i;", kStart));
    EXPECT_TRUE(slow.Has("99", "int i;", kStart));
}

} // namespace
} // namespace tagging
