// wren outline.
#include "tests/cli/symbols/SymbolsFixture.h"

#include <nlohmann/json.hpp>
#include <sstream>

using ::testing::HasSubstr;
using Json = nlohmann::json;

namespace {

class OutlineCommand : public SymbolCommands {};

} // namespace

TEST_F(OutlineCommand, PrintsTheTreeOfAFile)
{
    const ProgramRun run = Run({"outline", "shape.h"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "     2  struct Shape\n"
                          "     3    prototype Area() const\n"
                          "     4    member side\n"
                          "     6  struct Square\n"
                          "     7    prototype Area() const\n");
}

TEST_F(OutlineCommand, ShowsTheScopeOfWhatIsDefinedElsewhere)
{
    EXPECT_EQ(Run({"outline", "shape.cpp"}).output, "     3  function Shape::Area() const\n");
}

TEST_F(OutlineCommand, NeedsNoIndex)
{
    Run({"outline", "shape.h"});
    EXPECT_FALSE(std::filesystem::exists(tree / "cache"));
}

TEST_F(OutlineCommand, ReadsATextOfTheNamedLanguage)
{
    const ProgramRun run = RunOn("class Shape { int side; };\n", {"outline", "-", "--language", "c++"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "     1  class Shape\n     1    member side\n");
}

TEST_F(OutlineCommand, NeedsTheLanguageOfATextWithoutAName)
{
    const ProgramRun run = RunOn("int x;\n", {"outline", "-"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.errors, HasSubstr("--language"));
    EXPECT_EQ(RunOn("int x;\n", {"outline", "-", "--language", "Lisp"}).status, 2);
}

TEST_F(OutlineCommand, JsonHasTheMembersInsideOfTheirClass)
{
    std::istringstream lines(Run({"outline", "shape.h", "--json"}).output);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    const Json shape = Json::parse(line);
    EXPECT_EQ(shape["name"], "Shape");
    EXPECT_EQ(shape["kind"], "struct");
    EXPECT_EQ(shape["line"], 2);
    EXPECT_EQ(shape["endLine"], 5);
    ASSERT_EQ(shape["children"].size(), 2u);
    EXPECT_EQ(shape["children"][1]["name"], "side");
    EXPECT_EQ(shape["children"][1]["type"], "int");
}

TEST_F(OutlineCommand, SaysWhenThereIsNothing)
{
    tree.Write("project/empty.c", "// nothing\n");
    const ProgramRun run = Run({"outline", "empty.c"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "wren: there is no symbol in empty.c\n");
}

TEST_F(OutlineCommand, RefusesFilesThatCannotBeRead)
{
    for (const char* file : {"gone.c", "."}) {
        const ProgramRun run = Run({"outline", file});
        EXPECT_EQ(run.status, 2) << file;
        EXPECT_NE(run.errors, "") << file;
    }
    EXPECT_EQ(Run({"outline"}).status, 2);
}

TEST_F(OutlineCommand, ReadsAnyBytes)
{
    using namespace std::string_literals;
    tree.Write("project/odd.c", "int a;\0\xff\xfe int b;\nint \xc3\xa9t\xc3\xa9;\nint last"s);
    const ProgramRun run = Run({"outline", "odd.c", "--json"});
    EXPECT_TRUE(run.status == 0 || run.status == 1) << run.status << run.errors;
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);)
        EXPECT_TRUE(Json::accept(line)) << line;
}
