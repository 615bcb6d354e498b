#include "vetch/support/Clock.h"

#include <gtest/gtest.h>

namespace {

TEST(Clock, NeverRunsBackwards)
{
    bigtime_t before = system_time();
    for (int i = 0; i < 1000; ++i) {
        const bigtime_t now = system_time();
        ASSERT_GE(now, before);
        before = now;
    }
}

TEST(Clock, TheVirtualClockMovesOnlyOnRequest)
{
    vetch::UseVirtualClock(5'000'000);
    EXPECT_EQ(system_time(), 5'000'000);
    EXPECT_EQ(system_time(), 5'000'000);
    vetch::AdvanceVirtualClock(100'001);
    EXPECT_EQ(system_time(), 5'100'001);
    vetch::UseRealClock();
    EXPECT_NE(system_time(), 5'100'001);
}

} // namespace
