#include "cplustags/OldTags.h"

#include "cplustags/TagLine.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace cplustags {
namespace {

using Texts = std::vector<std::string>;

struct KindCase {
    const char* why;
    std::string content;
    Target kind;
};

const KindCase kKinds[] = {
    {"an empty file has nothing to lose", "", Target::Tags},
    {"of ctags", "!_TAG_FILE_SORTED\t1\t/x/\n", Target::Tags},
    {"line numbers", "name\ta.c\t12;\"\tf\n", Target::Tags},
    {"patterns", "name\ta.c\t/^name$/;\"\tf\n", Target::Tags},
    {"a pattern with what ends it", "name\ta.c\t/^a\\/b;\"\tc$/;\"\tf\n", Target::Tags},
    {"a number and a pattern", "name\ta.c\t12;/^name$/;\"\tf\n", Target::Tags},
    {"carriage returns", "name\ta.c\t12\r\nname\ta.c\t/x/\r\n", Target::Tags},
    {"a first line longer than what is looked at", "name\ta.c\t12;\"\tf\tsignature:" + std::string(20000, 'x') + "\n",
     Target::Tags},
    {"backward patterns", "name\ta.c\t?^name$?;\"\tf\n", Target::Tags},
    {"the oldest format", "name\ta.c\t12\n", Target::Tags},
    {"cut off in its first line", "name\ta.c\t1", Target::Tags},
    {"damaged behind its first line", "name\ta.c\t12\n\0\0garbage", Target::Tags},
    {"a source", "#include <stdio.h>\n", Target::Foreign},
    {"a table", "one\ttwo\tthree\n", Target::Foreign},
    {"a table with a number", "ann\tred\t12\nbob\tblue\tmany\n", Target::Foreign},
    {"a table with fractions", "ann\tred\t1.5\n", Target::Foreign},
    {"a table of four columns", "ann\tred\t12\t13\n", Target::Foreign},
    {"a table with paths", "ann\tred\t/home/ann/x\n", Target::Foreign},
    {"of another editor's tags", "\f\na.c,12\n", Target::Foreign},
    {"an empty line first", "\nname\ta.c\t12\n", Target::Foreign},
    {"binary",
     std::string("\x7f"
                 "ELF\0\0",
                 6),
     Target::Foreign},
    {"binary with a tag's tabs", std::string("a\0b\ta.c\t12\n", 11), Target::Foreign},
    {"one endless line", std::string(100000, 'x'), Target::Foreign},
};

TEST(WhatIs, Cases)
{
    const TempDirectory directory;
    for (const KindCase& row : kKinds)
        EXPECT_EQ(WhatIs(directory.Write("tags", row.content)), row.kind) << row.why;
}

TEST(WhatIs, OfWhatIsNoFile)
{
    const TempDirectory directory;
    EXPECT_EQ(WhatIs(directory / "missing"), Target::Absent);
    EXPECT_EQ(WhatIs(directory / "missing/tags"), Target::Absent);
    EXPECT_EQ(WhatIs(directory.Path()), Target::Foreign);
    EXPECT_EQ(WhatIs("/dev/null"), Target::Foreign);
    ASSERT_EQ(::mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(WhatIs(directory / "fifo"), Target::Foreign) << "nobody waits for its other end";
    directory.Write("real", "name\ta.c\t1\n");
    std::filesystem::create_symlink("real", directory / "link");
    std::filesystem::create_symlink("nothing", directory / "dangling");
    EXPECT_EQ(WhatIs(directory / "link"), Target::Tags);
    EXPECT_EQ(WhatIs(directory / "dangling"), Target::Absent);
    std::filesystem::create_symlink("round", directory / "round");
    EXPECT_EQ(WhatIs(directory / "round"), Target::Unreadable);
    EXPECT_EQ(WhatIs("/proc/self/mem"), Target::Unreadable);
}

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

TEST(LinesThatStay, Cases)
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

TEST(LinesThatStay, AreShortEnoughForReaders)
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

TEST(LinesThatStay, AreInOrderAfterTheyWereShortened)
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

TEST(LinesThatStay, AsksOnceForEachFile)
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

TEST(LinesThatStay, OfAFileThatCannotBeReadAreNone)
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
} // namespace cplustags
