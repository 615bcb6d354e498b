#include "wren/core/FindReport.h"

#include <gtest/gtest.h>

namespace wren {
namespace {

constexpr const char* kGone = "find: '/a': No such file or directory\n";
constexpr const char* kClosed = "find: '/b': Permission denied\n";
constexpr const char* kNotWanted = "find: 'standard output': Broken pipe\nfind: write error\n";

struct ListCase {
    const char* why;
    std::string statuses;
    std::string complaints;
    bool isWhole;
};

const ListCase kLists[] = {
    {"well", "0\n", "", true},
    {"well, with a warning", "0\n", "find: warning: x\n", true},
    {"two in one line", "0\n0\n", "", true},
    {"gone meanwhile, and not for us to read", "1\n", std::string(kGone) + kClosed, true},
    {"the reader had enough", "1\n", kNotWanted, true},
    {"the reader had enough, killed by that", "141\n", "", true},
    {"the reader had enough behind a complaint", "1\n", std::string(kGone) + kNotWanted, true},
    {"failed without a word", "1\n", "", false},
    {"the disk", "1\n", std::string(kGone) + "find: '/c': Input/output error\n", false},
    {"descriptors", "1\n", "find: '/c': Too many open files\n", false},
    {"a wrong setting", "1\n", "find: unknown predicate '-nmae'\n", false},
    {"the list could not be written", "1\n", "find: 'standard output': No space left on device\n", false},
    {"what another program says in its place", "1\n", "sh: 1: x: Permission denied\n", false},
    {"killed", "137\n", "", false},
    {"ended", "143\n", kGone, false},
    {"not there", "127\n", "sh: 1: find: not found\n", false},
    {"the second one failed", "0\n1\n", "", false},
    {"never ended", "", "", false},
    {"no number", "x\n", "", false},
};

TEST(ListFromFind, Cases)
{
    for (const ListCase& row : kLists)
        EXPECT_EQ(ProblemWithList(row.statuses, row.complaints).empty(), row.isWhole)
            << row.why << ": " << ProblemWithList(row.statuses, row.complaints);
}

} // namespace
} // namespace wren
