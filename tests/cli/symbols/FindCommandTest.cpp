// wren find.
#include "tests/cli/symbols/SymbolsFixture.h"

#include <nlohmann/json.hpp>
#include <sstream>

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Json = nlohmann::json;

namespace {

class FindCommand : public SymbolCommands {};

} // namespace

TEST_F(FindCommand, PrintsKindAndScopeOfTheMatches)
{
    const ProgramRun run = Run({"find", "Twi"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "main.cpp:3: function Twice(int number)\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(FindCommand, ShorterNamesComeFirst)
{
    EXPECT_THAT(Run({"find", "S"}).output, StartsWith("shape.h:2: struct Shape\nshape.h:6: struct Square\n"));
}

TEST_F(FindCommand, ScopesNarrowTheSearch)
{
    EXPECT_EQ(Run({"find", "Square::Ar"}).output, "shape.h:7: prototype Square::Area() const\n");
}

TEST_F(FindCommand, SaysWhenThereAreMore)
{
    const ProgramRun run = Run({"find", "Area", "--limit", "1"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.errors, HasSubstr("--limit"));
}

TEST_F(FindCommand, SaysWhenNothingMatches)
{
    const ProgramRun run = Run({"find", "zzz"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "wren: no symbol matches \"zzz\"\n");
    EXPECT_EQ(run.output, "");
}

TEST_F(FindCommand, JsonHasThePlacesOfTheLetters)
{
    const Json match = Json::parse(Run({"find", "twc", "--json"}).output);
    EXPECT_EQ(match["path"], tree / "project/main.cpp");
    EXPECT_EQ(match["line"], 3);
    EXPECT_EQ(match["name"], "Twice");
    EXPECT_EQ(match["kind"], "function");
    EXPECT_EQ(match["positions"], Json({0, 1, 3}));
}

TEST_F(FindCommand, AnswersAPatternForEachLineOfTheInput)
{
    const ProgramRun run = RunOn("Twi\nzzz\nmain\n", {"find", "-"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "main.cpp:3: function Twice(int number)\n\n\nmain.cpp:5: function main()\n\n");
}

TEST_F(FindCommand, AnswersEachLineOfTheInputWithOneOfJson)
{
    std::istringstream lines(RunOn("Twi\nzzz\n", {"find", "-", "--json"}).output);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(Json::parse(line)["pattern"], "Twi");
    EXPECT_EQ(Json::parse(line)["found"].size(), 1u);
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(Json::parse(line)["found"].size(), 0u);
    EXPECT_EQ(Json::parse(line)["more"], false);
    EXPECT_FALSE(std::getline(lines, line));
}

TEST_F(FindCommand, SearchesTheProjectOfAnotherDirectory)
{
    const ProgramRun run = RunProgram(Command({"find", "Twi", "--in", tree / "project"}), "/", Environment());
    EXPECT_EQ(run.output, tree / "project/main.cpp:3: function Twice(int number)\n") << run.errors;
    EXPECT_EQ(Run({"find", "Twi", "--in", "nowhere"}).status, 2);
}

TEST_F(FindCommand, ControlCharactersInPathsReachOnlyPrograms)
{
    tree.Write("project/\x1b[31m.c", "int odd_name;\n");
    EXPECT_EQ(Run({"find", "odd_name"}).output, "\x1b[31m.c:1: variable odd_name\n");
    const ProgramRun terminal =
        RunProgram({"/usr/bin/script", "-qec", ShellWord(WREN_PROGRAM) + " find odd_name", "/dev/null"},
                   tree / "project", Environment());
    EXPECT_THAT(terminal.output, HasSubstr("?[31m.c"));
}

TEST_F(FindCommand, RefusesUnknownArguments)
{
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"find"}, {"find", "a", "b"}, {"find", "a", "--limit", "x"}}) {
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 2) << words.back();
        EXPECT_EQ(run.output, "") << words.back();
    }
}
