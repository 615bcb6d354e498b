// wren definition, declaration, references, implementations and explain.
#include "tests/cli/symbols/SymbolsFixture.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

using ::testing::HasSubstr;
using Json = nlohmann::json;

namespace {

class PlaceCommands : public SymbolCommands {
protected:
    // The answer to the question about a place, without the headers of the system.
    ProgramRun Ask(const std::string& question, const std::string& place, std::vector<std::string> options = {}) const
    {
        options.insert(options.begin(), {question, place, "--no-system"});
        return Run(options);
    }
};

constexpr const char* kAreaCall = "main.cpp:8:24";
constexpr const char* kDefinition = "shape.cpp:3:12: int Shape::Area() const\n";
constexpr const char* kDeclaration = "shape.h:3:17:     virtual int Area() const;\n";

} // namespace

TEST_F(PlaceCommands, DefinitionPrintsTheLineOfTheDefinition)
{
    const ProgramRun run = Ask("definition", kAreaCall, {"--limit", "1"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, kDefinition);
}

TEST_F(PlaceCommands, DeclarationPrintsTheLineOfTheDeclaration)
{
    const ProgramRun run = Ask("declaration", kAreaCall, {"--limit", "1"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, kDeclaration);
}

TEST_F(PlaceCommands, OnADefinitionTheUserGoesBackToTheDeclaration)
{
    EXPECT_EQ(Ask("definition", "shape.cpp:3:12", {"--limit", "1"}).output, kDeclaration);
}

TEST_F(PlaceCommands, LocalsAreFound)
{
    EXPECT_EQ(Ask("definition", "main.cpp:8:18").output, "main.cpp:7:11:     Shape shape;\n");
}

TEST_F(PlaceCommands, AnIncludeMeansItsFile)
{
    EXPECT_EQ(Ask("definition", "main.cpp:1:12").output, "shape.h:1:1: #pragma once\n");
}

TEST_F(PlaceCommands, WithoutAColumnTheFirstIdentifierCounts)
{
    const ProgramRun run = Ask("definition", "main.cpp:7", {"--limit", "1"});
    EXPECT_EQ(run.output, "shape.h:2:8: struct Shape {\n") << run.errors;
}

TEST_F(PlaceCommands, JsonSaysWhatWasFoundAndHow)
{
    const ProgramRun run = Ask("definition", kAreaCall, {"--json", "--limit", "1"});
    const Json answer = Json::parse(run.output);
    EXPECT_EQ(answer["path"], tree / "project/shape.cpp");
    EXPECT_EQ(answer["line"], 3);
    EXPECT_EQ(answer["column"], 12);
    EXPECT_EQ(answer["name"], "Area");
    EXPECT_EQ(answer["kind"], "function");
    EXPECT_EQ(answer["scope"], "Shape");
    EXPECT_EQ(answer["signature"], "() const");
    EXPECT_EQ(answer["how"], "member");
    EXPECT_EQ(answer["definition"], true);
    EXPECT_EQ(answer["text"], "int Shape::Area() const");
}

TEST_F(PlaceCommands, ReferencesPrintsUsesOutsideOfComments)
{
    const ProgramRun run = Ask("references", "main.cpp:3:12");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "main.cpp:3:12: static int Twice(int number) { return 2 * number; }\n"
                          "main.cpp:8:12:     return Twice(shape.Area()); // Area\n");
}

TEST_F(PlaceCommands, ReferencesOfANameNeedNoPlace)
{
    const ProgramRun run = Run({"references", "--symbol", "Twice", "--no-system", "--json"});
    EXPECT_EQ(run.status, 0) << run.errors;
    const Json first = Json::parse(run.output.substr(0, run.output.find('\n')));
    EXPECT_EQ(first["name"], "Twice");
    EXPECT_EQ(first["role"], "definition");
    EXPECT_EQ(Run({"references", "--symbol", "NoSuchName", "--no-system"}).status, 1);
}

TEST_F(PlaceCommands, ImplementationsPrintsDerivedClasses)
{
    const ProgramRun run = Ask("implementations", "shape.h:2:8");
    EXPECT_EQ(run.output, "shape.h:6:8: struct Square : Shape {\n") << run.errors;
}

TEST_F(PlaceCommands, ExplainPrintsTheSteps)
{
    const ProgramRun run = Run({"explain", kAreaCall, "--no-system"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr("Area"));
    EXPECT_THAT(run.output, HasSubstr("shape.cpp"));
}

TEST_F(PlaceCommands, AnswerFromTheTextAsItIsNow)
{
    Ask("definition", kAreaCall);
    tree.Write("project/main.cpp", "int New();\nint main() { return New(); }\n");
    EXPECT_EQ(Ask("declaration", "main.cpp:2:21", {"--limit", "1"}).output, "main.cpp:1:5: int New();\n");
}

TEST_F(PlaceCommands, FreshWaitsForOtherChangedFiles)
{
    Ask("definition", kAreaCall);
    tree.Write("project/shape.cpp", "#include \"shape.h\"\n\n\nint Shape::Area() const { return 1; }\n");
    EXPECT_EQ(Ask("definition", kAreaCall, {"--fresh", "--limit", "1"}).output,
              "shape.cpp:4:12: int Shape::Area() const { return 1; }\n");
}

TEST_F(PlaceCommands, AnswerAPlaceForEachLineOfTheInput)
{
    const ProgramRun run = RunOn("main.cpp:8:12\nmain.cpp:2:1\nmain.cpp:8:18\n", {"definition", "-", "--no-system"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "main.cpp:3:12: static int Twice(int number) { return 2 * number; }\n\n\n"
                          "main.cpp:7:11:     Shape shape;\n\n");
}

TEST_F(PlaceCommands, AnswerEachLineOfTheInputWithOneOfJson)
{
    const ProgramRun run = RunOn("main.cpp:8:12\nno place\ngone.cpp:1\n", {"definition", "-", "--json", "--no-system"});
    std::istringstream lines(run.output);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    const Json first = Json::parse(line);
    EXPECT_EQ(first["place"], "main.cpp:8:12");
    EXPECT_EQ(first["name"], "Twice");
    EXPECT_EQ(first["more"], false);
    ASSERT_EQ(first["answers"].size(), 1u);
    EXPECT_EQ(first["answers"][0]["line"], 3);
    for (const char* place : {"no place", "gone.cpp:1"}) {
        ASSERT_TRUE(std::getline(lines, line)) << place;
        const Json answer = Json::parse(line);
        EXPECT_EQ(answer["place"], place);
        EXPECT_FALSE(answer["error"].get<std::string>().empty());
    }
    EXPECT_FALSE(std::getline(lines, line));
}

TEST_F(PlaceCommands, FailWhenNoLineOfTheInputHasAnAnswer)
{
    EXPECT_EQ(RunOn("main.cpp:2:1\n", {"definition", "-", "--no-system"}).status, 1);
    EXPECT_EQ(RunOn("", {"definition", "-", "--no-system"}).status, 1);
}

TEST_F(PlaceCommands, SayWhenThereIsNoAnswer)
{
    tree.Write("project/alone.cpp", "int x = Unknown();\n// comment\n    return;\n");
    const ProgramRun unknown = Ask("definition", "alone.cpp:1:9");
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.errors, "wren: no definition was found of \"Unknown\" at alone.cpp:1:9\n");
    EXPECT_EQ(unknown.output, "");
    const ProgramRun keyword = Ask("references", "alone.cpp:3");
    EXPECT_EQ(keyword.status, 1);
    EXPECT_EQ(keyword.errors, "wren: \"return\" at alone.cpp:3 is a keyword\n");
    for (const char* const command : {"definition", "references", "explain"}) {
        const ProgramRun comment = Ask(command, "alone.cpp:2:5");
        EXPECT_EQ(comment.status, 1) << command;
        EXPECT_EQ(comment.errors, "wren: there is no name at alone.cpp:2:5, but a comment, a string, or a blank\n");
        EXPECT_EQ(comment.output, "") << command;
    }
}

TEST_F(PlaceCommands, WithoutAColumnMeanTheFirstNameThatIsNotAKeyword)
{
    tree.Write("project/lines.c", "#define LIMIT 3\nstatic const int Limit(void) { return LIMIT; }\nint a;\n"
                                  "int f(void) {\n    if (a)\n        return Limit();\n    return 0;\n}\n");
    struct Case {
        const char* place;
        const char* said;
    };
    for (const Case& c : {Case{"lines.c:1", "lines.c:1:9:"}, Case{"lines.c:2", "lines.c:2:18:"},
                          Case{"lines.c:5", "lines.c:3:5:"}, Case{"lines.c:6", "lines.c:2:18:"}}) {
        const ProgramRun run = Ask("definition", c.place);
        EXPECT_EQ(run.status, 0) << c.place << run.errors;
        EXPECT_THAT(run.output, HasSubstr(c.said)) << c.place;
    }
}

TEST_F(PlaceCommands, SayThatWithoutAProjectOnlyTheFilesDirectoryIsIndexed)
{
    tree.Write("loose/a/part.c", "int part(void) { return 1; }\n");
    tree.Write("loose/b/user.c", "int part(void);\nint user(void) { return part(); }\n");
    const auto ask = [&](std::vector<std::string> more) {
        more.insert(more.begin(), {WREN_PROGRAM, "definition", "b/user.c:2:25", "--no-system"});
        return RunProgram(more, tree / "loose", Environment());
    };
    const ProgramRun first = ask({});
    EXPECT_EQ(first.errors, "wren: no project is known around " + (tree / "loose/b") +
                                ", so only that directory is indexed; --in DIR indexes all of another one\n");
    EXPECT_EQ(first.output, "b/user.c:1:5: int part(void);\n");
    EXPECT_EQ(ask({}).errors, "") << "said once";
    EXPECT_EQ(ask({"--in", "."}).output, "a/part.c:1:5: int part(void) { return 1; }\n");
}

TEST_F(PlaceCommands, RefuseUnusablePlaces)
{
    struct Case {
        const char* place;
        const char* said;
    };
    for (const Case& c : {Case{"main.cpp:99", "has only"}, Case{"main.cpp:1:99", "has only"},
                          Case{"gone.cpp:1", "gone.cpp"}, Case{"main.cpp", "main.cpp"}, Case{".:1", ""}}) {
        const ProgramRun run = Ask("definition", c.place);
        EXPECT_EQ(run.status, 2) << c.place;
        EXPECT_THAT(run.errors, HasSubstr(c.said)) << c.place;
        EXPECT_EQ(run.output, "") << c.place;
    }
}

TEST_F(PlaceCommands, RefuseUnknownArguments)
{
    const std::vector<std::vector<std::string>> kWrong = {
        {"definition"},
        {"definition", "main.cpp:1", "main.cpp:2"},
        {"definition", "main.cpp:1", "--limit", "0"},
        {"definition", "main.cpp:1", "--symbol", "x"},
        {"references", "main.cpp:1", "--symbol", "x"},
        {"definition", "main.cpp:1", "--in", "nowhere"},
        {"explain"},
    };
    for (const auto& words : kWrong) {
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 2) << words.back();
        EXPECT_NE(run.errors, "") << words.back();
        EXPECT_EQ(run.output, "") << words.back();
    }
}

TEST_F(PlaceCommands, NeverIndexTheHomeDirectoryUnasked)
{
    tree.Write("home/loose.cpp", "int loose;\n");
    const ProgramRun run =
        RunProgram(Command({"definition", tree / "home/loose.cpp:1:5", "--no-system"}), tree / "home", Environment());
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.errors, HasSubstr("--in DIR"));
    const ProgramRun named =
        RunProgram(Command({"definition", tree / "home/loose.cpp:1:5", "--no-system", "--in", tree / "home"}),
                   tree / "home", Environment());
    EXPECT_EQ(named.status, 0) << named.errors;
}

TEST_F(PlaceCommands, FindAFileThroughALink)
{
    std::filesystem::create_directory_symlink(tree / "project", tree / "link");
    const ProgramRun run = Ask("definition", tree / "link/main.cpp:8:12");
    EXPECT_EQ(run.output, "main.cpp:3:12: static int Twice(int number) { return 2 * number; }\n") << run.errors;
}
