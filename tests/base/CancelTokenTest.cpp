#include "base/CancelToken.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <thread>

namespace base {
namespace {

bool IsReadable(const CancelToken& token)
{
    pollfd place = {token.Descriptor(), POLLIN, 0};
    return ::poll(&place, 1, 0) == 1 && place.revents == POLLIN;
}

TEST(CancelToken, StaysCancelled)
{
    CancelToken token;
    EXPECT_FALSE(token.IsCancelled());
    EXPECT_FALSE(IsReadable(token));
    for (int times = 0; times < 3; ++times) {
        token.Cancel();
        EXPECT_TRUE(token.IsCancelled());
        EXPECT_TRUE(IsReadable(token));
    }
}

TEST(CancelToken, WakesAThreadThatPollsIt)
{
    CancelToken token;
    std::thread waiting([&] {
        pollfd place = {token.Descriptor(), POLLIN, 0};
        EXPECT_EQ(::poll(&place, 1, -1), 1);
        EXPECT_TRUE(token.IsCancelled());
    });
    token.Cancel();
    waiting.join();
}

CancelToken* gToken = nullptr;

TEST(CancelToken, IsCancelledByAHandlerOfSignalsThatLeavesErrno)
{
    CancelToken token;
    gToken = &token;
    const auto before = std::signal(SIGUSR1, [](int) { gToken->Cancel(); });
    errno = ENOENT;
    std::raise(SIGUSR1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_TRUE(token.IsCancelled());
    std::signal(SIGUSR1, before);
}

} // namespace
} // namespace base
