#include "tagsfile/TagLine.h"

#include "vetch/support/Strings.h"

#include <gtest/gtest.h>

namespace tagsfile {
namespace {

std::string Line(const Tag& tag, const std::string& field)
{
    std::string text = "before\n";
    if (!AppendTagLine(text, tag, field)) {
        EXPECT_EQ(text, "before\n");
        return "left out";
    }
    return text.substr(7);
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

TEST(TagLine, HasNameFileLineKindAndScope)
{
    EXPECT_EQ(Line({"name", 12, 'f', "class:Outer::Inner"}, "a b.c"), "name\ta b.c\t12;\"\tf\tclass:Outer::Inner\n");
    EXPECT_EQ(Line({"operator <", 1, 'p', ""}, "/a.h"), "operator <\t/a.h\t1;\"\tp\n");
}

TEST(TagLine, DropsItsScopeWhenItWouldBeTooLong)
{
    const std::string field = "a.c";
    const std::string rest = "\ta.c\t1;\"\tf";
    const std::string name(kLongestLine - rest.length() - 1, 'n');
    EXPECT_EQ(Line({name, 1, 'f', ""}, field).length(), kLongestLine);
    EXPECT_EQ(Line({name, 1, 'f', "class:X"}, field), name + rest + "\n");
    EXPECT_EQ(Line({name + "n", 1, 'f', ""}, field), "left out");
    const std::string shorter = name.substr(8);
    EXPECT_EQ(Line({shorter, 1, 'f', "class:X"}, field).length(), kLongestLine);
    EXPECT_EQ(Line({shorter, 1, 'f', "class:XY"}, field), shorter + rest + "\n");
}

} // namespace
} // namespace tagsfile
