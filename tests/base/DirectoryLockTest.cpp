#include "base/DirectoryLock.h"

#include "tests/support/TempDirectory.h"

#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace {

// Makes and locks a file at the path; closing it unlocks.
int HeldAt(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600);
    ::flock(file, LOCK_EX);
    return file;
}

void WaitUntil(const std::atomic<int>& count, int reached)
{
    while (count < reached)
        std::this_thread::yield();
}

TEST(DirectoryLock, ReportsOnceThatItWaits)
{
    const TempDirectory tree;
    const int first = HeldAt(tree / ".tags.lock");
    const int second = HeldAt(tree / "next");
    std::atomic<int> waits = 0;
    std::atomic<int> looks = 0;
    std::thread waiting([&] {
        const base::DirectoryLock lock(
            tree.Path(), [&] { ++waits; }, [&] { return ++looks < 0; });
    });
    WaitUntil(waits, 1);
    std::filesystem::rename(tree / "next", tree / ".tags.lock"); // like a next run that made its own file
    ::close(first);
    WaitUntil(looks, looks + 5); // by then the second file is checked
    EXPECT_EQ(waits, 1);
    ::close(second);
    waiting.join();
    EXPECT_FALSE(std::filesystem::exists(tree / ".tags.lock"));
}

} // namespace
