#include "tagsfile/TagFields.h"

#include "vetch/support/ShellEscape.h"

#include <gtest/gtest.h>

namespace tagsfile {
namespace {

struct LineCase {
    const char* why;
    const char* line;
    const char* name;
    std::optional<std::string_view> field;
};

TEST(TagLine, GivesItsNameAndField)
{
    const LineCase cases[] = {
        {"a tag", "name\ta.c\t1;\"\tf\n", "name", "a.c"},
        {"a pseudo-tag names no file", "!_TAG_FILE_SORTED\t1\t/yes/\n", "!_TAG_FILE_SORTED", std::nullopt},
        {"no name", "\ta.c\t1;\"\tf\n", "", std::nullopt},
        {"no address", "name\ta.c\n", "name", std::nullopt},
        {"no file", "name\t\t1;\"\tf\n", "name", std::nullopt},
        {"empty", "", "", std::nullopt},
    };
    for (const LineCase& row : cases) {
        EXPECT_EQ(FieldOfLine(row.line), row.field) << row.why;
        EXPECT_EQ(NameOfLine(row.line), row.name) << row.why;
    }
}

struct FieldCase {
    const char* why;
    const char* path;
    const char* directory;
    std::optional<std::string> field;
};

const FieldCase kFields[] = {
    {"below the tags file: relative, so that both can move", "/p/src/a.c", "/p", "src/a.c"},
    {"beside it", "/p/a.c", "/p", "a.c"},
    {"elsewhere", "/q/a.c", "/p", "/q/a.c"},
    {"a longer name of the same beginning is elsewhere", "/pq/a.c", "/p", "/pq/a.c"},
    {"a backslash is an escape to the reader", "/p/a\\ b.c", "/p", "a\\\\ b.c"},
    {"blanks and quotes are none", "/p/a b'c\".h", "/p", "a b'c\".h"},
    {"bytes as they are", "/p/\xff\x01.h", "/p", "\xff\x01.h"},
    {"a tab would end the field", "/p/a\tb.c", "/p", std::nullopt},
    {"a line break would end the line", "/p/a\nb.c", "/p", std::nullopt},
    {"what is above the tags file does not matter", "/p\n/a.c", "/p\n", "a.c"},
    {"the root's tags", "/a.c", "", "a.c"},
};

TEST(FileField, Cases)
{
    for (const FieldCase& row : kFields)
        EXPECT_EQ(FileField(row.path, row.directory), row.field) << row.why;
}

TEST(FileField, IsUnescapedByReaders)
{
    for (const FieldCase& row : kFields) {
        if (!row.field)
            continue;
        EXPECT_EQ(PathOfField(*row.field, row.directory), row.path) << row.why;
        const std::string plain = DeEscaped(*row.field);
        EXPECT_EQ(plain[0] == '/' ? plain : row.directory + ("/" + plain), row.path) << row.why;
    }
}

} // namespace
} // namespace tagsfile
