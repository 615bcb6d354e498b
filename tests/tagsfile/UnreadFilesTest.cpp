#include "tagsfile/UnreadFiles.h"

#include "tagsfile/SortedClaim.h"
#include "tests/support/SparseFile.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <limits>
#include <string>
#include <unistd.h>

namespace tagsfile {
namespace {

const std::string kTag = "a\ta.cpp\t1;\"\tf\n";

std::string Claim(off_t size)
{
    return std::string(kSortedClaim) + SortedClaimValue(size) + "\t//\n";
}

TEST(SparseTagsFiles, AreNotReadWhenLargerThanTheyClaim)
{
    const struct {
        const char* why;
        std::string head;
        off_t size;
        const char* unread; // "" when it is read
    } kCases[] = {
        {"no claim", kTag, 100 * kGigabyte, ""},
        {"as it says", Claim(100 * kGigabyte), 100 * kGigabyte, ""},
        {"shorter", Claim(100 * kGigabyte), 2 * kGigabyte, ""},
        {"some were added", Claim(5'000'000'000), 10'000'000'000, ""},
        {"a gigabyte was added", Claim(500'000'000), 500'000'000 + kGigabyte, ""},
        {"still a usual size", Claim(125), kGigabyte, ""},
        {"nearly all was added", Claim(125), 100'000'000'000,
         "it is 100.0 GB long, and says that it was made with 125 bytes"},
        {"behind other pseudo-tags", "!_TAG_A\t1\t//\n" + Claim(2'000'000), 16'000'000'000'000,
         "it is 16.0 TB long, and says that it was made with 2.0 MB"},
        {"the longest there can be", Claim(0), std::numeric_limits<off_t>::max(),
         "it is 9.2 EB long, and says that it was made with 0 bytes"},
        {"no number", std::string(kSortedClaim) + "x\t//\n", 100 * kGigabyte, ""},
        {"below any number", std::string(kSortedClaim) + "-5\t//\n", 100 * kGigabyte, ""},
        {"beyond any number", std::string(kSortedClaim) + "99999999999999999999\t//\n", 100 * kGigabyte, ""},
        {"a claim that does not end", std::string(kSortedClaim) + "125", 100 * kGigabyte, ""},
        {"among the tags", kTag + Claim(125), 100 * kGigabyte, ""},
        {"empty", "", 100 * kGigabyte, ""},
    };
    const TempDirectory directory;
    for (const auto& c : kCases) {
        const int file = ::open(directory.Write("tags", c.head).c_str(), O_RDONLY | O_CLOEXEC);
        EXPECT_EQ(WhyUnread(file, c.size).value_or(""), c.unread) << c.why; // c.size stands for the real size
        ::close(file);
    }
}

} // namespace
} // namespace tagsfile
