#include "tagsfile/Bisection.h"

#include "tests/support/TempDirectory.h"
#include "tests/tagsfile/Sequence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace tagsfile {
namespace {

// Many names begin alike, and some are prefixes of others.
std::string Name(Sequence& sequence)
{
    const char* const kStarts[] = {"",  "a",   "draw",        "initWithFrame:", "operator ",
                                   "~", "Zoo", "vector<int>", "\xc3\xa4"};
    std::string name = sequence.One(kStarts);
    for (size_t more = 1 + sequence.Below(3); more > 0; --more)
        name += static_cast<char>('a' + sequence.Below(26));
    return name;
}

std::string SortedTags(Sequence& sequence)
{
    std::vector<std::string> lines(200 + sequence.Below(1500));
    for (std::string& line : lines)
        line = Name(sequence) + "\tsource.h\t" + std::to_string(sequence.Below(500)) + ";\"\tf\n";
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines)
        text += line;
    return text;
}

TEST(Bisection, StopsBeforeTheFirstMatchingLine)
{
    const TempDirectory directory;
    Sequence sequence(3);
    for (int round = 0; round < 300; ++round) {
        const std::string text = SortedTags(sequence);
        const int file = ::open(directory.Write("tags", text).c_str(), O_RDONLY | O_CLOEXEC);
        const auto size = static_cast<off_t>(text.length());
        for (int search = 0; search < 20; ++search) {
            const std::string start = Name(sequence);
            size_t first = 0;
            while (first < text.length() && text.compare(first, start.length(), start) < 0)
                first = text.find('\n', first) + 1;
            const std::optional<off_t> place = PlaceOfLines(file, 0, size, start);
            ASSERT_TRUE(place.has_value());
            EXPECT_TRUE(*place == 0 || text[static_cast<size_t>(*place) - 1] == '\n');
            EXPECT_LE(*place, static_cast<off_t>(first));
            EXPECT_GT(*place, static_cast<off_t>(first) - 6 * 1024);
        }
        EXPECT_EQ(::lseek(file, 0, SEEK_CUR), 0) << "the position is as it was";
        ::close(file);
    }
}

TEST(Bisection, GivesUpOnUnsortedLines)
{
    std::string falling;
    for (char name = 'z'; name >= 'a'; --name)
        falling += std::string(1000, name) + "\n";
    const struct {
        const char* why;
        std::string text;
        off_t size; // the assumed size of the file
    } kCases[] = {
        {"names that fall", falling, static_cast<off_t>(falling.length())},
        {"no line at all", std::string(100'000, 'x'), 100'000},
        {"a file that has become shorter", "a\nb\n", 100'000},
        {"an empty file", "", 100'000},
    };
    const TempDirectory directory;
    for (const auto& c : kCases) {
        const int file = ::open(directory.Write("tags", c.text).c_str(), O_RDONLY | O_CLOEXEC);
        EXPECT_FALSE(PlaceOfLines(file, 0, c.size, "mm").has_value()) << c.why;
        ::close(file);
    }
}

} // namespace
} // namespace tagsfile
