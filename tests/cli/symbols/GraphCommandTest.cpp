// wren graph.
#include "tests/cli/symbols/SymbolsFixture.h"

#include <filesystem>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class GraphCommand : public SymbolCommands {
protected:
    // The labels of the ends of each arrow, "main.cpp -> shape.h", in the order of the output.
    static std::vector<std::string> Arrows(const std::string& dot)
    {
        std::map<std::string, std::string> labels;
        std::vector<std::string> arrows;
        std::istringstream lines(dot);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string from, second, to;
            words >> from >> second >> to;
            if (second.starts_with("[label=\""))
                labels[from] = second.substr(8, second.rfind('"') - 8);
            else if (second == "->")
                arrows.push_back(labels[from] + " -> " + labels[to.substr(0, to.size() - 1)]);
        }
        return arrows;
    }

    std::vector<std::string> ArrowsOf(const std::vector<std::string>& words) const
    {
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 0) << run.errors;
        return Arrows(run.output);
    }
};

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

} // namespace

TEST_F(GraphCommand, DrawsWhatAFileIncludes)
{
    tree.Write("project/shape.h", "#include \"base.h\"\n#include <vector>\n");
    tree.Write("project/base.h", "");
    EXPECT_THAT(ArrowsOf({"graph", "includes", "main.cpp"}),
                ElementsAre("main.cpp -> shape.h", "shape.h -> base.h", "shape.h -> <vector>"));
    EXPECT_THAT(ArrowsOf({"graph", "includes", "main.cpp", "--depth", "1"}), ElementsAre("main.cpp -> shape.h"));
}

TEST_F(GraphCommand, DrawsWhatIncludesAFile)
{
    EXPECT_THAT(ArrowsOf({"graph", "includes", "shape.h", "--up"}),
                UnorderedElementsAre("main.cpp -> shape.h", "shape.cpp -> shape.h"));
}

TEST_F(GraphCommand, DrawsWhatAFunctionCalls)
{
    EXPECT_THAT(ArrowsOf({"graph", "calls", "main"}), UnorderedElementsAre("main -> Twice", "main -> Shape::Area"));
}

TEST_F(GraphCommand, DrawsWhatCallsAFunction)
{
    EXPECT_THAT(ArrowsOf({"graph", "calls", "Twice", "--up"}), ElementsAre("main -> Twice"));
}

TEST_F(GraphCommand, DrawsDerivedClassesAndBases)
{
    EXPECT_THAT(ArrowsOf({"graph", "classes", "Shape"}), ElementsAre("Square -> Shape"));
    EXPECT_THAT(ArrowsOf({"graph", "classes", "Square", "--up"}), ElementsAre("Square -> Shape"));
}

TEST_F(GraphCommand, IsBounded)
{
    std::string classes = "struct Base {};\n";
    for (int number = 0; number < 50; ++number)
        classes += "struct D" + std::to_string(number) + " : Base {};\n";
    tree.Write("project/many.h", classes);
    const ProgramRun run = Run({"graph", "classes", "Base", "--limit", "10"});
    EXPECT_EQ(Arrows(run.output).size(), 9u);
    EXPECT_THAT(run.errors, HasSubstr("the nearest 10"));
}

TEST_F(GraphCommand, NamesOfFilesAreOnlyText)
{
    tree.Write("project/a\"];x[label=\"b.h", "");
    tree.Write("project/odd.c", "#include \"a\\\"];x[label=\\\"b.h\"\n#include \"<b>x</b>.h\"\n");
    const ProgramRun run = Run({"graph", "includes", "odd.c"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.output, Not(HasSubstr("a\"]")));
}

TEST_F(GraphCommand, GraphvizDrawsAPicture)
{
    if (!std::filesystem::exists("/usr/bin/dot"))
        GTEST_SKIP() << "Graphviz is not installed";
    const ProgramRun svg = Run({"graph", "includes", "main.cpp", "--format", "svg"});
    EXPECT_EQ(svg.status, 0) << svg.errors;
    EXPECT_THAT(svg.output, AllOf(HasSubstr("<svg"), HasSubstr("shape.h"), HasSubstr("</svg>")));
}

TEST_F(GraphCommand, SaysWhatIsMissing)
{
    const ProgramRun file = Run({"graph", "includes", "gone.h"});
    EXPECT_EQ(file.status, 1);
    EXPECT_EQ(file.errors, "wren: there is no file \"gone.h\" in the index\n");
    EXPECT_EQ(Run({"graph", "calls", "Gone"}).status, 1);
    EXPECT_EQ(Run({"graph", "classes", "Twice"}).status, 1) << "a function";
    EXPECT_EQ(Run({"graph", "flows", "x"}).status, 2);
    EXPECT_EQ(Run({"graph", "calls"}).status, 2);
    EXPECT_EQ(Run({"graph", "calls", "main", "--format", "pdf"}).status, 2);
}
