#include "tagsfile/TagsFileKind.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace tagsfile {
namespace {

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
    {"a table of three columns, the last of them numbers", "ann\tred\t12\nbob\tblue\t7\n", Target::Foreign},
    {"one row of it", "ann\tred\t12\n", Target::Foreign},
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

TEST(TagsFileKind, Cases)
{
    const TempDirectory directory;
    directory.Write("a.c", ""); // the source of the tags exists
    for (const KindCase& row : kKinds)
        EXPECT_EQ(WhatIs(directory.Write("tags", row.content)), row.kind) << row.why;
}

TEST(TagsFileKind, NonFilesAreAbsentOrForeign)
{
    const TempDirectory directory;
    EXPECT_EQ(WhatIs(directory / "missing"), Target::Absent);
    EXPECT_EQ(WhatIs(directory / "missing/tags"), Target::Absent);
    EXPECT_EQ(WhatIs(directory.Path()), Target::Foreign);
    EXPECT_EQ(WhatIs("/dev/null"), Target::Foreign);
    ASSERT_EQ(::mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(WhatIs(directory / "fifo"), Target::Foreign) << "nobody waits for its other end";
    directory.Write("a.c", "");
    directory.Write("real", "name\ta.c\t1\n");
    std::filesystem::create_symlink("real", directory / "link");
    std::filesystem::create_symlink("nothing", directory / "dangling");
    EXPECT_EQ(WhatIs(directory / "link"), Target::Tags);
    EXPECT_EQ(WhatIs(directory / "dangling"), Target::Absent);
    std::filesystem::create_symlink("round", directory / "round");
    EXPECT_EQ(WhatIs(directory / "round"), Target::Unreadable);
    EXPECT_EQ(WhatIs("/proc/self/mem"), Target::Unreadable);
}

TEST(TagsFileKind, OurProgramIsNamedInTheFirstLines)
{
    const TempDirectory directory;
    const auto isOurs = [&](const std::string& text) { return IsFromOurProgram(directory.Write("tags", text)); };
    EXPECT_TRUE(isOurs("!_TAG_FILE_FORMAT\t2\t//\n!_TAG_PROGRAM_NAME\tcplustags\t/by ctags/\na\ta.c\t1\n"));
    EXPECT_FALSE(isOurs("!_TAG_PROGRAM_NAME\tUniversal Ctags\t//\n"));
    EXPECT_FALSE(isOurs("a\t!_TAG_PROGRAM_NAME\tcplustags\t//\n"));
    EXPECT_FALSE(isOurs(""));
    EXPECT_FALSE(IsFromOurProgram(directory / "none"));
    isOurs("!_TAG_PROGRAM_NAME\tcplustags\t//\n");
    std::filesystem::create_symlink("tags", directory / "link");
    EXPECT_FALSE(IsFromOurProgram(directory / "link")) << "what is behind a link";
}

TEST(TagsFileKind, TheOldestFormatNeedsAnExistingSource)
{
    const TempDirectory directory;
    const std::string tags = directory.Write("tags", "gone\tgone.c\t1\nname\tsub/a.c\t12\n");
    EXPECT_EQ(WhatIs(tags), Target::Foreign) << "it may be any table";
    std::filesystem::create_directory(directory / "sub");
    directory.Write("sub/a.c", "");
    EXPECT_EQ(WhatIs(tags), Target::Tags) << "the second line names a file, relative to the tags file";
}

} // namespace
} // namespace tagsfile
