#include "tagsfile/OldTags.h"

#include "tagsfile/TagLine.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace tagsfile {
namespace {

using Texts = std::vector<std::string>;

struct StayCase {
    const char* why;
    const char* content;
    Texts lines;
};

const StayCase kStays[] = {
    {"sorted", "!_TAG_X\t1\t//\na\tstays.c\t1\nb\tgoes.c\t1\nc\tstays.c\t1\n", {"a\tstays.c\t1\n", "c\tstays.c\t1\n"}},
    {"not sorted, whatever it says",
     "!_TAG_FILE_SORTED\t1\t//\nc\tstays.c\t1\na\tstays.c\t1\n",
     {"a\tstays.c\t1\n", "c\tstays.c\t1\n"}},
    {"no line break at the end", "a\tstays.c\t1\nb\tstays.c\t1", {"a\tstays.c\t1\n", "b\tstays.c\t1\n"}},
    {"carriage returns go, with them lines of one tag would be two",
     "a\tstays.c\t1\r\nb\tgoes.c\t1\r\nc\tstays.c\t1\r\n\r\nd\tstays.c\t1\r",
     {"a\tstays.c\t1\n", "c\tstays.c\t1\n", "d\tstays.c\t1\n"}},
    {"all of them", "a\tstays.c\t1\r\r\n\r\r\n", {"a\tstays.c\t1\n"}},
    {"in another order than that of bytes",
     "!_TAG_FILE_SORTED\t2\t//\na\tstays.c\t1\nB\tstays.c\t1\nc\tgoes.c\t1\n",
     {"B\tstays.c\t1\n", "a\tstays.c\t1\n"}},
    {"equal lines are for Merged()", "a\tstays.c\t1\na\tstays.c\t1\n", {"a\tstays.c\t1\n", "a\tstays.c\t1\n"}},
    {"pseudo-tags anywhere go", "b\tstays.c\t1\n!_TAG_X\t1\t//\n", {"b\tstays.c\t1\n"}},
    {"lines that name no file stay too", "\n\nodd line\n", {"odd line\n"}},
    {"bytes are unsigned", "\x80\tstays.c\t1\na\tstays.c\t1\n", {"a\tstays.c\t1\n", "\x80\tstays.c\t1\n"}},
    {"nothing", "", {}},
};

TEST(KeptOldLines, Cases)
{
    const TempDirectory directory;
    for (const StayCase& row : kStays) {
        const auto source = LinesThatStay(directory.Write("tags", row.content),
                                          [](std::string_view field) { return field == "goes.c"; });
        ASSERT_TRUE(source) << row.why;
        Texts lines;
        for (std::string_view line; source->Next(line);)
            lines.emplace_back(line);
        EXPECT_EQ(lines, row.lines) << row.why;
    }
}

TEST(KeptOldLines, AreShortEnoughForReaders)
{
    const std::string begin = "name\tstays.c\t/a;\"\tb/;\"\tf";
    const std::string scope = "\tclass:C";
    const std::string fits = begin + scope + "\tx:" + std::string(kLongestLine - begin.size() - scope.size() - 4, 'x');
    const struct {
        const char* why;
        std::string line;
        Texts stays;
    } cases[] = {
        {"just short enough", fits, {fits + "\n"}},
        {"too long by a byte: without its last field", fits + "x", {begin + scope + "\n"}},
        {"without no more than it takes", fits + "\ty:" + std::string(5000, 'y'), {fits + "\n"}},
        {"only name, file, place and kind are left", begin + "\tclass:" + std::string(1023, 'C'), {begin + "\n"}},
        {"a pattern is not cut", "name\tstays.c\t/a;\"\tb" + std::string(1023, 'p') + "/;\"\tf", {}},
        {"no fields to lose", "name\tstays.c\t/" + std::string(1023, 'p') + "/", {}},
        {"no tag", std::string(100000, 'x'), {}},
    };
    const TempDirectory directory;
    for (const auto& row : cases) {
        const auto source = LinesThatStay(directory.Write("tags", row.line + "\n"), [](auto) { return false; });
        ASSERT_TRUE(source) << row.why;
        Texts lines;
        for (std::string_view line; source->Next(line);)
            lines.emplace_back(line);
        EXPECT_EQ(lines, row.stays) << row.why;
    }
}

TEST(KeptOldLines, StaySortedAfterShortening)
{
    const TempDirectory directory;
    const std::string longOne = "a\tx.c\t1;\"\tf\tclass:" + std::string(2000, 'A') + "\n";
    const auto source =
        LinesThatStay(directory.Write("tags", longOne + "a\tx.c\t1;\"\tf\tclass:B\n"), [](auto) { return false; });
    std::string_view line;
    ASSERT_TRUE(source->Next(line));
    EXPECT_EQ(line, "a\tx.c\t1;\"\tf\tclass:B\n");
    ASSERT_TRUE(source->Next(line));
    EXPECT_EQ(line, "a\tx.c\t1;\"\tf\n");
}

TEST(KeptOldLines, AskOnceForEachFile)
{
    const TempDirectory directory;
    int asked = 0;
    const auto source = LinesThatStay(directory.Write("tags", "a\tx.c\t1\nb\ty.c\t1\nc\tx.c\t1\n"), [&](auto) {
        ++asked;
        return false;
    });
    int lines = 0;
    for (std::string_view line; source->Next(line);)
        ++lines;
    EXPECT_EQ(lines, 3);
    EXPECT_EQ(asked, 2);
}

TEST(KeptOldLines, FailWithErrnoWhenTheFileCannotBeRead)
{
    const TempDirectory directory;
    EXPECT_EQ(LinesThatStay(directory / "missing", [](auto) { return false; }), nullptr);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(LinesThatStay(directory.Path(), [](auto) { return false; }), nullptr) << "a directory";
    EXPECT_EQ(errno, EISDIR);
    EXPECT_EQ(LinesThatStay("/proc/self/mem", [](auto) { return false; }), nullptr) << "it cannot be read at 0";
    EXPECT_EQ(errno, EIO);
}

} // namespace
} // namespace tagsfile
