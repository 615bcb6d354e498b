#include "base/ProgressLine.h"

#include "tests/support/Terminal.h"

#include <gtest/gtest.h>

namespace base {
namespace {

std::string Text(double)
{
    return "going on";
}

TEST(ProgressLine, ShowsNothingBeforeItsDelayHasPassed)
{
    const Terminal terminal;
    {
        ProgressLine line(terminal.Program(), std::chrono::hours(1));
        line.Show(Text);
        line.Show(Text);
    }
    EXPECT_EQ(terminal.Written(), "");
}

TEST(ProgressLine, ShowsMessagesBeforeItsDelayHasPassed)
{
    const Terminal terminal;
    ProgressLine line(terminal.Program(), std::chrono::hours(1));
    line.Say("a message\n");
    line.Show(Text);
    EXPECT_EQ(terminal.Written(), "a message\n");
}

TEST(ProgressLine, ShowsTheFirstTextAtOnceWithoutADelay)
{
    const Terminal terminal;
    {
        ProgressLine line(terminal.Program());
        line.Show(Text);
        EXPECT_EQ(terminal.Written(), "\r\033[Kgoing on");
    }
    EXPECT_EQ(terminal.Written(), "\r\033[K") << "it is erased";
}

} // namespace
} // namespace base
