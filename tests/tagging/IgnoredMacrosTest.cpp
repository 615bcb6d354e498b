#include "tagging/IgnoredMacros.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

namespace tagging {
namespace {

using Macros = std::set<std::string>;

TEST(IgnoredMacros, Cases)
{
    const struct {
        const char* why;
        const char* list;
        Macros macros;
    } cases[] = {
        {"none", "", {}},
        {"one", "A", {"A"}},
        {"with commas", "A,B,C", {"A", "B", "C"}},
        {"with blanks", " A  B\tC\n", {"A", "B", "C"}},
        {"empty ones", ",A,,B,", {"A", "B"}},
        {"twice", "A,A", {"A"}},
        {"with arguments", "A+,B", {"A+", "B"}},
        {"stands for nothing", "A=", {"A"}},
        {"stands for something", "CLASS=class,B", {"B"}},
        {"a dash is ctags' own", "-", {}},
        {"a file that is not there", "@/none/at/all", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IgnoredMacros(c.list), c.macros) << c.why;
}

TEST(IgnoredMacros, CanBeReadFromAFile)
{
    const TempDirectory directory;
    const std::string file = directory.Write("macros", "A\nB+\n");
    EXPECT_EQ(IgnoredMacros(file), (Macros{"A", "B+"}));
    EXPECT_EQ(IgnoredMacros("@" + file), (Macros{"A", "B+"}));
}

TEST(ListForCtags, MakesTheFileOfMacrosAbsolute)
{
    EXPECT_EQ(ListForCtags("A,B", "/d"), "A,B");
    EXPECT_EQ(ListForCtags("@macros", "/d"), "@/d/macros");
    EXPECT_EQ(ListForCtags("./macros", "/d"), "@/d/macros");
    EXPECT_EQ(ListForCtags("/e/macros", "/d"), "@/e/macros");
    EXPECT_EQ(ListForCtags("", "/d"), "");
}

} // namespace
} // namespace tagging
