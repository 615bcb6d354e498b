#include "base/Holes.h"

#include "tests/support/SparseFile.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// A file with a byte at each of these places, and holes elsewhere. -1, with the reason, if it cannot be made.
int OpenWithBytesAt(const TempDirectory& directory, const std::vector<off_t>& places, off_t size, std::string& reason)
{
    const std::string path = directory / "file";
    std::filesystem::remove(path);
    reason = MakeSparse(path, size);
    if (!reason.empty())
        return -1;
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    for (const off_t place : places)
        EXPECT_EQ(::pwrite(file, "x", 1, place), 1);
    return file;
}

} // namespace

TEST(Holes, CountWhenTheyAreManyAndMoreThanHalfOfTheFile)
{
    const TempDirectory directory;
    const struct {
        const char* why;
        std::vector<off_t> places;
        off_t size;
        bool mostly;
    } kCases[] = {
        {"one hole", {}, 2 * kGigabyte, true},
        {"a very long one", {}, kTerabyte, true},
        {"behind a first line", {0}, kTerabyte, true},
        {"in front of a last line", {kTerabyte - 1}, kTerabyte, true},
        {"two that are many together", {kGigabyte * 3 / 4}, kGigabyte * 3 / 2, true},
        {"not many bytes", {}, kGigabyte, false},
        {"hardly any", {100'000}, 200'000, false},
    };
    for (const auto& c : kCases) {
        std::string reason;
        const int file = OpenWithBytesAt(directory, c.places, c.size, reason);
        if (file < 0)
            GTEST_SKIP() << reason;
        EXPECT_EQ(::lseek(file, 7, SEEK_SET), 7);
        EXPECT_EQ(base::IsMostlyHoles(file), c.mostly) << c.why;
        EXPECT_EQ(::lseek(file, 0, SEEK_CUR), 7) << c.why;
        ::close(file);
    }
}

TEST(Holes, OnlyPlainFilesAreMostlyHoles)
{
    const TempDirectory directory;
    const int folder = ::open(directory.Path().c_str(), O_RDONLY | O_CLOEXEC);
    const int device = ::open("/dev/zero", O_RDONLY | O_CLOEXEC);
    const int plain = ::open(directory.Write("file", "text\n").c_str(), O_RDONLY | O_CLOEXEC);
    for (const int file : {folder, device, plain, -1}) {
        EXPECT_FALSE(base::IsMostlyHoles(file));
        ::close(file);
    }
}
