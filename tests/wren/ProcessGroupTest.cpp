#include "wren/core/ProcessGroup.h"

#include "base/Process.h"
#include "tests/support/Fifo.h"

#include <chrono>
#include <csignal>
#include <future>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

namespace wren {
namespace {

constexpr std::chrono::seconds kGroupLimit(60);

// A shell and its child process, which writes its number and then waits forever.
class StartedGroup {
public:
    // The child runs 'beginning' first.
    StartedGroup(std::chrono::milliseconds patience, const std::string& beginning) : group(patience)
    {
        ::prctl(PR_SET_CHILD_SUBREAPER, 1); // not every system's first process waits for orphans
        const std::string inner =
            beginning + "; echo $$ >\"" + began.Path() + "\"; while :; do read line <\"" + never.Path() + "\"; done";
        run = std::async(std::launch::async, [this, inner] {
            return group.Run("echo $$ >\"" + began.Path() + "\"; sh -c '" + inner + "'; true", {STDERR_FILENO, {}});
        });
        shell = std::stoi(began.ReadLine(::getpid()));
        inShell = std::stoi(began.ReadLine(::getpid()));
    }
    ~StartedGroup()
    {
        ::kill(-shell, SIGKILL);
        ::prctl(PR_SET_CHILD_SUBREAPER, 0);
    }

    // True once the shell has been waited for; false at the limit.
    bool ShellIsGone() const
    {
        const auto end = std::chrono::steady_clock::now() + kGroupLimit;
        while (::kill(shell, 0) == 0 && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        return ::kill(shell, 0) != 0;
    }

    const Fifo began;
    const Fifo never;
    ProcessGroup group;
    pid_t shell = 0;
    pid_t inShell = 0;
    std::future<base::Result<int>> run;
};

TEST(ProcessGroup, EndsTheChildrenOfAKilledShell)
{
    StartedGroup started(std::chrono::hours(1), ":");
    ::kill(started.shell, SIGKILL);
    ASSERT_EQ(started.run.wait_for(kGroupLimit), std::future_status::ready);
    EXPECT_EQ(base::ShellStatus(*started.run.get()), 128 + SIGKILL);
    EXPECT_NE(::kill(started.inShell, 0), 0) << "it would write behind the back of the next run";
}

TEST(ProcessGroup, KillsSurvivorsOfTheShellAtTheSecondStop)
{
    StartedGroup started(std::chrono::hours(1), "trap \"\" TERM");
    started.group.Stop(SIGTERM);
    ASSERT_TRUE(started.ShellIsGone());
    started.group.Stop(SIGTERM);
    ASSERT_EQ(started.run.wait_for(kGroupLimit), std::future_status::ready);
    EXPECT_NE(::kill(started.inShell, 0), 0);
}

TEST(ProcessGroup, KillsProcessesThatIgnoreAStopAfterAWhile)
{
    StartedGroup started(std::chrono::milliseconds(1), "trap \"\" TERM");
    started.group.Stop(SIGTERM);
    ASSERT_EQ(started.run.wait_for(kGroupLimit), std::future_status::ready);
    EXPECT_NE(::kill(started.inShell, 0), 0);
}

} // namespace
} // namespace wren
