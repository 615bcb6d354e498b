#include "wren/cli/symbols/Dot.h"

#include "tests/support/Environment.h"
#include "tests/support/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::HasSubstr;

TEST(DotQuoted, Cases)
{
    const struct {
        const char* why;
        std::string text;
        const char* quoted;
    } kCases[] = {
        {"a name", "Outer::f", R"("Outer::f")"},
        {"the end of the quotes", R"(x" shape=box)", R"("x\" shape=box")"},
        {"an escape of Graphviz", R"(\N\l)", R"("\\N\\l")"},
        {"a backslash before the end", R"(x\)", R"("x\\")"},
        {"what would be HTML without quotes", "<b>x</b>", R"("<b>x</b>")"},
        {"control characters", "a\nb\x1b[0m", R"("a?b?[0m")"},
        {"bytes that are not UTF-8", "a\xff", "\"a\xef\xbf\xbd\""},
        {"nothing", "", R"("")"},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::DotQuoted(each.text), each.quoted) << each.why;
}

namespace {

wren::Graph TwoFiles()
{
    return {{{"a.c", "a.c", ""}, {"b.h", "b.h", "x/b.h:3"}}, 1, {{0, 1}}, false};
}

} // namespace

TEST(DotText, ListsNodesAndEdges)
{
    EXPECT_EQ(wren::DotText(TwoFiles(), "includes a.c", false),
              "digraph \"includes a.c\" {\n"
              "    rankdir=LR;\n"
              "    node [shape=box, fontname=\"sans-serif\", fontsize=11, fillcolor=\"#e8eef7\"];\n"
              "    n0 [label=\"a.c\", style=\"filled,bold\"];\n"
              "    n1 [label=\"b.h\", tooltip=\"x/b.h:3\"];\n"
              "    n0 -> n1;\n"
              "}\n");
}

TEST(DotText, TurnsTheEdgesOfAReversedGraph)
{
    EXPECT_THAT(wren::DotText(TwoFiles(), "includes b.h", true), HasSubstr("    n1 -> n0;\n"));
}

namespace {

// A stand-in for Graphviz, first in $PATH.
class DrawDot : public ::testing::Test {
protected:
    DrawDot() : path(std::getenv("PATH")) { SetVariable("PATH", programs.Path().c_str()); }
    ~DrawDot() override { SetVariable("PATH", path.c_str()); }

    void Install(const std::string& script)
    {
        std::filesystem::permissions(programs.Write("dot", "#!/bin/sh\n" + script), std::filesystem::perms::owner_all);
    }

    const std::string path;
    TempDirectory programs;
};

} // namespace

TEST_F(DrawDot, ReturnsWhatGraphvizMakesOfTheText)
{
    Install("echo \"drawn as $1:\"\nexec /bin/cat\n");
    const base::Result<std::string> drawn = wren::DrawDot("digraph {}\n", "svg");
    ASSERT_TRUE(drawn) << drawn.Failure().Message();
    EXPECT_EQ(*drawn, "drawn as -Tsvg:\ndigraph {}\n");
}

TEST_F(DrawDot, TakesTextsOfAnySize)
{
    Install("exec /bin/cat\n");
    const std::string dot(10'000'000, 'x');
    const base::Result<std::string> drawn = wren::DrawDot(dot, "svg");
    ASSERT_TRUE(drawn) << drawn.Failure().Message();
    EXPECT_EQ(*drawn, dot);
}

TEST_F(DrawDot, FailsWithoutGraphviz)
{
    const base::Result<std::string> drawn = wren::DrawDot("digraph {}\n", "svg");
    ASSERT_FALSE(drawn);
    EXPECT_THAT(drawn.Failure().Message(), HasSubstr("apt install graphviz"));
}

TEST_F(DrawDot, FailsWhenGraphvizDoes)
{
    Install("exit 3\n");
    const base::Result<std::string> drawn = wren::DrawDot("digraph {}\n", "svg");
    ASSERT_FALSE(drawn);
    EXPECT_THAT(drawn.Failure().Message(), HasSubstr("status 3"));
}
