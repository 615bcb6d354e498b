#include "wren/desktop/state/CopyWriter.h"

#include "tests/support/FileContent.h"

#include "tests/desktop/state/StateDirectoryFixture.h"
#include "tests/support/RefusedThreads.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

size_t RunningThreads()
{
    return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}

// Whoever opens the file for writing waits while it lives: as for a slow disk.
class HeldFile {
public:
    explicit HeldFile(const std::string& file) : descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC))
    {
        before = std::signal(SIGIO, SIG_IGN); // it tells that somebody waits
        held = ::fcntl(descriptor, F_SETLEASE, F_RDLCK) == 0;
    }
    ~HeldFile()
    {
        ::close(descriptor);
        std::signal(SIGIO, before);
    }
    bool IsHeld() const { return held; }

private:
    const int descriptor;
    void (*before)(int);
    bool held = false;
};

class CopyWriterOnASlowDisk : public StateDirectoryFixture {};

} // namespace

TEST_F(CopyWriterOnASlowDisk, NeverBlocksTheUserAndSkipsStaleCopies)
{
    const std::string file = home.Write("a", "old");
    fs::create_hard_link(file, home / "b"); // such a file is written in place
    wren::CopyWriter writer;
    {
        const HeldFile disk(file);
        if (!disk.IsHeld())
            GTEST_SKIP() << "the file system cannot hold a file";
        writer.Write(file, "", "first");
        writer.Write(file, "", "second");
        writer.Write(file, "", "third");
        EXPECT_EQ(Content(file), "old") << "nobody has waited";
    }
    writer.Finish();
    EXPECT_EQ(Content(file), "third");
}

TEST(CopyWriter, WritesTheHeadAndTheNewestText)
{
    const TempDirectory directory;
    wren::CopyWriter writer;
    for (int number = 0; number < 1000; ++number)
        writer.Write(directory / "a", "head ", std::to_string(number));
    writer.Finish();
    EXPECT_EQ(Content(directory / "a"), "head 999");
}

TEST(CopyWriter, HandlesRequestsForOneFileInOrder)
{
    const TempDirectory directory;
    wren::CopyWriter writer;
    for (int round = 0; round < 50; ++round) {
        writer.Write(directory / "gone", "", "text");
        writer.Write(directory / "back", "", "text");
        writer.Remove(directory / "gone");
        writer.Remove(directory / "back");
        writer.Write(directory / "back", "", std::to_string(round));
    }
    writer.Finish();
    EXPECT_FALSE(fs::exists(directory / "gone"));
    EXPECT_EQ(Content(directory / "back"), "49");
}

TEST(CopyWriter, HasNoThreadWhileIdle)
{
    const TempDirectory directory;
    std::thread([] {}).join(); // with the first thread, a sanitizer starts one of its own
    const size_t before = RunningThreads();
    wren::CopyWriter writer;
    EXPECT_EQ(RunningThreads(), before);
    writer.Write(directory / "a", "", "text");
    writer.Finish();
    EXPECT_EQ(RunningThreads(), before);
    writer.Write(directory / "a", "", "again");
    writer.Finish();
    EXPECT_EQ(Content(directory / "a"), "again");
}

TEST(CopyWriter, WritesOnTheCallersThreadWhenNoneStarts)
{
    const TempDirectory directory;
    std::vector<std::string> written;
    Complaints complaints;
    wren::CopyWriter writer([&](const std::string& file, const std::string& problem) {
        written.push_back(file.substr(file.rfind('/') + 1) + problem);
    });
    {
        const RefusedThreads refused;
        writer.Write(directory / "a", "head ", "one");
        EXPECT_EQ(Content(directory / "a"), "head one") << "at once";
        writer.Write(directory / "a", "head ", "two");
        EXPECT_EQ(Content(directory / "a"), "head two");
        writer.Write(directory / "b", "", "text");
        writer.Remove(directory / "a");
        EXPECT_FALSE(fs::exists(directory / "a"));
        EXPECT_THAT(complaints.Take(), ElementsAre(NoThreadsFor("copies of unsaved texts are written while you wait")));
    }
    EXPECT_THAT(written, ElementsAre("a", "a", "b"));
    writer.Write(directory / "a", "", "on its thread again");
    writer.Finish();
    EXPECT_EQ(Content(directory / "a"), "on its thread again");
}

TEST(CopyWriter, FinishesItsWorkBeforeItDies)
{
    const TempDirectory directory;
    {
        wren::CopyWriter writer;
        for (const char* name : {"a", "b", "c"})
            writer.Write(directory / name, "", name);
    }
    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(Content(directory / name), name);
}

TEST(CopyWriter, ReportsTheOutcomeOfEachCopy)
{
    const TempDirectory directory;
    std::vector<std::string> told;
    wren::CopyWriter writer(
        [&](const std::string& file, const std::string& problem) { told.push_back(file + " -- " + problem); });
    for (const char* file : {"nowhere/a", "a"}) {
        writer.Write(directory / file, "", "text");
        writer.Finish();
    }
    writer.Remove(directory / "a");
    writer.Finish();
    EXPECT_THAT(told, ElementsAre(HasSubstr("/a -- " + directory.Path() + "/nowhere/a: No such file or directory"),
                                  directory / "a" + " -- "));
}
