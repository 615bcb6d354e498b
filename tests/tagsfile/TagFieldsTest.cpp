#include "tagsfile/TagFields.h"

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

} // namespace
} // namespace tagsfile
