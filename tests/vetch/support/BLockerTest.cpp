#include "vetch/support/BLocker.h"

#include "tests/support/CallFunction.h"
#include "vetch/support/HeldLocks.h"

#include <gtest/gtest.h>

namespace {

TEST(BLocker, IsRecursive)
{
    BLocker locker("for a person who debugs");
    EXPECT_TRUE(locker.Lock());
    EXPECT_TRUE(locker.Lock());
    locker.Unlock();
    locker.Unlock();
}

TEST(BLocker, KeepsThreadsApart)
{
    BLocker locker;
    int counter = 0;
    for (int i = 0; i < 4; ++i)
        RunOnThread([&] {
            for (int j = 0; j < 1000; ++j) {
                locker.Lock();
                ++counter;
                locker.Unlock();
            }
        });
    vetch::JoinThreads();
    EXPECT_EQ(counter, 4000);
}

TEST(BLocker, IsCountedOnItsThread)
{
    BLocker first, second;
    EXPECT_EQ(vetch::HeldLocks(), 0);
    first.Lock();
    second.Lock();
    second.Lock();
    EXPECT_EQ(vetch::HeldLocks(), 3);
    second.Unlock();
    second.Unlock();
    first.Unlock();
    EXPECT_EQ(vetch::HeldLocks(), 0);
}

} // namespace
