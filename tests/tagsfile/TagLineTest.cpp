#include "tagsfile/TagLine.h"

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
