#include "wren/core/TagsLine.h"

#include <gtest/gtest.h>

namespace wren {
namespace {

using Kind = TagsLine::Kind;

struct LineCase {
    const char* why;
    std::string command;
    Kind kind;
    const char* unfinished;
    const char* file;
};

const LineCase kLines[] = {
    {"local tags", "\n# Execute\nfind /src \\( -name \"*.h\" \\) | cplustags -f /src/tags.tmp -L -\n", Kind::Make,
     "/src/tags.tmp", "/src/tags"},
    {"the system's", "\n# Execute\nfind /usr/include | cplustags -I X -f ~/Library/Caches/SystemHeaderTags.temp -L - ",
     Kind::Make, "/home/me/Library/Caches/SystemHeaderTags.temp", "/home/me/Library/Caches/SystemHeaderTags"},
    {"appended", "find /x | cplustags -f ~/Library/Caches/SystemHeaderTags.temp -L - --append=yes\n", Kind::Append,
     "/home/me/Library/Caches/SystemHeaderTags.temp", "/home/me/Library/Caches/SystemHeaderTags"},
    {"a move", "mv /src/tags.tmp /src/tags", Kind::Move, "/src/tags.tmp", "/src/tags"},
    {"blanks and quotes in names", "mv /a\\ b\\'s/tags.tmp /a\\ b\\'s/tags", Kind::Move, "/a b's/tags.tmp",
     "/a b's/tags"},
    {"a line break in a name", "mv /a'\n'b/tags.tmp /a'\n'b/tags", Kind::Move, "/a\nb/tags.tmp", "/a\nb/tags"},
    {"a name that looks like an option", "find /a\\ -f\\ /b | cplustags -f /a\\ -f\\ /b/tags.tmp -L -\n", Kind::Make,
     "/a -f /b/tags.tmp", "/a -f /b/tags"},
    {"settings with such an option come before", "find /a | cplustags -I \"x -f /y \" -f /a/tags.tmp -L -\n",
     Kind::Make, "/a/tags.tmp", "/a/tags"},
};

TEST(TagsLine, Cases)
{
    for (const LineCase& row : kLines)
        for (const char* home : {"/home/me", "/home/me/"}) {
            const std::optional<TagsLine> line = ReadTagsLine(row.command, home);
            ASSERT_TRUE(line) << row.why;
            EXPECT_EQ(line->kind, row.kind) << row.why;
            EXPECT_EQ(line->unfinished, row.unfinished) << row.why;
            EXPECT_EQ(line->file, row.file) << row.why;
        }
}

TEST(TagsLine, RejectsOtherCommands)
{
    for (const char* command : {"", "rm -rf /", "mv", "mv /src/tags.tmp", "mv /src/tags.tmp /etc/passwd",
                                "mv /src/other /src/tags", "mv src/tags.tmp src/tags", "find / | cplustags -f",
                                "find / | cplustags -f tags -L -", "find / | cplustags -f /src/other -L -"})
        EXPECT_FALSE(ReadTagsLine(command, "/home/me")) << command;
}

} // namespace
} // namespace wren
