#include "base/Descriptor.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>

namespace base {
namespace {

bool IsOpen(int number)
{
    return ::fcntl(number, F_GETFD) >= 0;
}

int Open()
{
    return ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

TEST(Descriptor, IsClosedWithItsOwner)
{
    const int number = Open();
    {
        const Descriptor file(number);
        EXPECT_TRUE(IsOpen(number));
    }
    EXPECT_FALSE(IsOpen(number));
}

TEST(Descriptor, KeepsTheReasonOfAFailure)
{
    errno = ENOSPC;
    {
        const Descriptor none;
        const Descriptor bad(1'000'000);
    }
    EXPECT_EQ(errno, ENOSPC);
}

TEST(Descriptor, HasOneOwnerAtATime)
{
    const int number = Open();
    Descriptor first(number);
    Descriptor second(std::move(first));
    EXPECT_FALSE(first.IsOpen());
    EXPECT_EQ(second.Number(), number);
    first = std::move(second);
    EXPECT_EQ(first.Release(), number);
    EXPECT_TRUE(IsOpen(number)) << "it is the caller's now";
    EXPECT_TRUE(first.Close()) << "there is none";
    ::close(number);
}

TEST(Descriptor, SaysWhenClosingFails)
{
    Descriptor file(1'000'000);
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(errno, EBADF);
}

} // namespace
} // namespace base
