// Names that are offered, nearest first.
#include "tests/resolve/Project.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::vector<std::string> Offered(const std::string& text)
{
    const Project project(text);
    std::vector<std::string> names;
    for (const resolve::Candidate& candidate : project.Complete().found)
        names.emplace_back(candidate.symbol.name);
    return names;
}

using Names = std::vector<std::string>;

} // namespace

TEST(Completion, MembersOfTheReceiver)
{
    const std::string shape =
        "struct Base {\n int origin;\n};\nstruct Shape : Base {\n Shape(int n);\n int size;\n void draw();\n};\n";
    EXPECT_EQ(Offered(shape + "void f(Shape s) {\n s.|\n}\n"), (Names{"draw", "size", "origin"}));
    EXPECT_EQ(Offered(shape + "void f(Shape* s) {\n s->d|\n}\n"), (Names{"draw"}));
    EXPECT_EQ(Offered(shape + "void f(std::vector<Shape> v) {\n v[0].or|\n}\n"), (Names{"origin"}));
    EXPECT_EQ(Offered(shape + "void f(Shape s) {\n s.draw();\n s.|\n}\n").front(), "draw") << "used before";
}

TEST(Completion, MembersOfAScope)
{
    EXPECT_EQ(Offered("enum class Color { Red, Green };\nint x = Color::|;\n"), (Names{"Green", "Red"}));
    EXPECT_EQ(Offered("namespace a {\nint one;\n}\nint x = a::|;\n"), (Names{"one"}));
    EXPECT_EQ(Offered("struct A {\n void first();\n void second();\n};\nvoid A::first() {}\nvoid A::|() {}\n").front(),
              "second")
        << "what is declared and not defined yet";
}

TEST(Completion, LocalsComeFirst)
{
    EXPECT_EQ(Offered("int counter;\nvoid f(int count) {\n int counted;\n cou|\n}\n"),
              (Names{"counted", "count", "counter"}));
    EXPECT_EQ(Offered("void f() {\n int inner;\n { int inside; }\n in|\n}\n"), (Names{"inner"})) << "a closed block";
}

TEST(Completion, NamesOfIncludedFiles)
{
    EXPECT_EQ(Offered("== a.h\nint shape_area(void);\n== b.h\nint shape_other(void);\n== a.c\n#include \"a.h\"\nint "
                      "x(void) { return shape_| }\n"),
              (Names{"shape_area", "shape_other"}));
}

TEST(Completion, MessagesOfTheReceiver)
{
    EXPECT_EQ(
        Offered(
            "== a.m\n@interface A\n- (int) size;\n- (id) at: (int)x with: (id)y;\n@end\nvoid f(A *a) {\n [a |];\n}\n"),
        (Names{"size", "at:with:"}));
}

TEST(Completion, NothingInStrings)
{
    EXPECT_EQ(Offered("int counter;\nconst char* s = \"cou|\";\n"), Names{});
}

TEST(Completion, IgnoresCaseUnlessACapitalIsTyped)
{
    const std::string text = "int Shape;\nint shape;\n";
    EXPECT_EQ(Offered(text + "int f() { return sha| }\n").size(), 2U);
    EXPECT_EQ(Offered(text + "int f() { return Sha| }\n"), Names{"Shape"});
}
