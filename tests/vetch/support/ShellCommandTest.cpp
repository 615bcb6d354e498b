#include "vetch/support/ShellCommand.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace {

std::mutex mutex;
std::vector<std::string> recorded;

int Record(const char* command, const vetch::ShellRequest& request)
{
    const std::lock_guard lock(mutex);
    recorded.push_back(command +
                       (request.IsAskedFor() ? "" : " as " + request.newer + " is newer than " + request.outdated));
    return 42;
}

TEST(ShellCommand, RunsInAShellAndIsWaitedFor)
{
    const TempDirectory directory;
    const std::string made = directory / "made";
    const int status = vetch::RunShellCommand(("for i in 1 2; do echo $i; done > '" + made + "'; exit 3").c_str());
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(std::filesystem::file_size(made), 4u);
}

TEST(ShellCommand, GoesToTheRunnerWhileThereIsOne)
{
    const TempDirectory directory;
    const std::string touch = "touch '" + (directory / "made") + "'";
    recorded.clear();
    vetch::SetShellRunner(Record);
    EXPECT_EQ(vetch::RunShellCommand(touch.c_str()), 42) << "its answer is the command's";
    EXPECT_EQ(recorded, std::vector<std::string>{touch});
    EXPECT_FALSE(std::filesystem::exists(directory / "made"));

    EXPECT_EQ(vetch::RunShellCommand("make", {"target", "source"}), 42);
    EXPECT_EQ(recorded.back(), "make as source is newer than target") << "why it is run comes along";

    vetch::SetShellRunner(nullptr);
    EXPECT_EQ(vetch::RunShellCommand(touch.c_str()), 0);
    EXPECT_EQ(recorded.size(), 2u);
    EXPECT_TRUE(std::filesystem::exists(directory / "made"));
}

TEST(ShellCommand, GoesToTheRunnerFromAnyThread)
{
    recorded.clear();
    vetch::SetShellRunner(Record);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int j = 0; j < 25; ++j)
                vetch::RunShellCommand("command");
        });
    for (std::thread& thread : threads)
        thread.join();
    vetch::SetShellRunner(nullptr);
    EXPECT_EQ(recorded.size(), 100u);
}

} // namespace
