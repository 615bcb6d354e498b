#include "tagsfile/TagLines.h"
#include "tests/support/TempDirectory.h"
#include "tests/tagsfile/LearnedOrder.h"
#include "tests/tagsfile/OwnCache.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fcntl.h>
#include <sys/stat.h>

namespace tagsfile {
namespace {

std::atomic<bool> gIsCancelled = false;

// Cancels reading for its lifetime.
struct CancelledReading {
    CancelledReading() { gIsCancelled = true; }
    ~CancelledReading() { gIsCancelled = false; }
};

constexpr long kLines = 20'000; // many blocks

// Sorted tags in a file old enough for its order to be learned.
std::string WriteLongTags(const TempDirectory& directory)
{
    std::string tags;
    for (long i = 0; i < kLines; ++i)
        tags += "name" + std::to_string(100'000 + i) + "\ta.cpp\t1;\"\tf\n";
    const std::string path = directory.Write("tags", tags);
    const timespec times[] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
    EXPECT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    return path;
}

TEST(CancelledReading, EndsAtTheNextBlockWithWholeLines)
{
    const TempDirectory directory;
    const std::string path = WriteLongTags(directory);
    LineReader reader(&gIsCancelled);
    ASSERT_TRUE(reader.Open(path.c_str()));
    std::string_view line;
    ASSERT_TRUE(reader.Next(line));
    long count = 1;
    {
        const CancelledReading cancelled;
        for (; reader.Next(line); ++count)
            ASSERT_TRUE(line.ends_with('\n')) << "half a line is none";
    }
    EXPECT_LT(count, kLines / 10);
    EXPECT_FALSE(reader.Next(line)) << "the end stays the end";
    reader.Close();
    ASSERT_TRUE(reader.Open(path.c_str()));
    for (count = 0; reader.Next(line);)
        ++count;
    EXPECT_EQ(count, kLines) << "later files are read";
    reader.Close();
}

TEST(CancelledReading, LearnsNothingAboutAFilesOrder)
{
    const TempDirectory directory;
    const std::string path = WriteLongTags(directory);
    for (const bool cancels : {true, false}) {
        TagLines lines(&gIsCancelled);
        ASSERT_TRUE(lines.Open(path.c_str()));
        std::string_view line;
        for (int i = 0; i < kLines / 2; ++i)
            ASSERT_TRUE(lines.Next(line));
        gIsCancelled = cancels;
        lines.Close(); // would otherwise read on to learn the order
        gIsCancelled = false;
        EXPECT_EQ(KnownFiles::Instance().Find(IdentityOf(path)).has_value(), !cancels);
    }
}

} // namespace
} // namespace tagsfile
