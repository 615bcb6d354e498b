#include "tagging/ctags/Scratch.h"

#include "tests/support/DoAndBeKilled.h"
#include "tests/support/FileContent.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace tagging {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

// Memory that reports this many free bytes and files.
SharedMemory Memory(const std::string& directory, unsigned long bytes, unsigned long files, unsigned long freeFiles)
{
    return {directory, [=](const char*, struct statvfs* room) {
                *room = {};
                room->f_frsize = 1;
                room->f_bavail = bytes;
                room->f_files = files;
                room->f_favail = freeFiles;
                return 0;
            }};
}

constexpr unsigned long kMuch = 1ul << 30;

TEST(Scratch, IsInMemoryWhenThereIsRoomForBytesAndFiles)
{
    const TempDirectory directory;
    fs::create_directory(directory / "shm");
    const struct {
        const char* why;
        unsigned long bytes, files, freeFiles;
        bool inMemory;
    } cases[] = {
        {"much of all", kMuch, kMuch, kMuch, true}, {"no limit for files", kMuch, 0, 0, true},
        {"no bytes", 4096, kMuch, kMuch, false},    {"no files", kMuch, kMuch, 0, false},
        {"a few files", kMuch, kMuch, 3, false},
    };
    for (const auto& c : cases) {
        {
            const Scratch scratch(directory / "other", Memory(directory / "shm", c.bytes, c.files, c.freeFiles));
            EXPECT_EQ(scratch.Directory().rfind(directory / "shm/", 0) == 0, c.inMemory) << c.why;
            EXPECT_EQ(scratch.Directory() == directory / "other", !c.inMemory) << c.why;
            EXPECT_EQ(fs::is_directory(scratch.Directory()), c.inMemory) << c.why;
        }
        EXPECT_EQ(NamesIn(directory / "shm"), Texts{}) << c.why;
    }
}

TEST(Scratch, IsOnDiskWhenNothingCanBeCreatedInMemory)
{
    const TempDirectory directory;
    const std::string user = std::to_string(::geteuid());
    fs::create_directory(directory / "shm");
    directory.Write("file", "");
    fs::create_directory(directory / "others");
    fs::create_directory(directory / "home");
    fs::create_directory(directory / "linked");
    fs::create_symlink(directory / "home", directory / "linked/cplustags-" + user);
    fs::create_directories(directory / "open/cplustags-" + user);
    fs::permissions(directory / "open/cplustags-" + user, fs::perms(0777));
    for (const char* memory : {"missing", "file", "linked", "open"}) {
        const Scratch scratch(directory / "other", Memory(directory / memory, kMuch, kMuch, kMuch));
        EXPECT_EQ(scratch.Directory(), directory / "other") << memory;
    }
    EXPECT_EQ(NamesIn(directory / "home"), Texts{});
    EXPECT_TRUE(fs::is_symlink(directory / "linked/cplustags-" + user));
}

TEST(Scratch, TheNextRunRemovesThatOfAKilledRunEvenWithoutRoom)
{
    const TempDirectory directory;
    fs::create_directory(directory / "shm");
    for (const unsigned long room : {kMuch, 0ul}) {
        DoAndBeKilled([&](const auto& beKilled) {
            const Scratch scratch(directory / "other", Memory(directory / "shm", kMuch, kMuch, kMuch));
            std::ofstream(scratch.Directory() + "/temporary") << "text";
            beKilled();
        });
        EXPECT_EQ(NamesIn(directory / "shm").size(), 1u);
        Scratch(directory / "other", Memory(directory / "shm", room, kMuch, kMuch));
        EXPECT_EQ(NamesIn(directory / "shm"), Texts{}) << room;
    }
}

} // namespace
} // namespace tagging
