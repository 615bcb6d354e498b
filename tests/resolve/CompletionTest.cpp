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

TEST(Completion, WhatAClassAddsComesBeforeWhatItInherits)
{
    const std::string files = "== a.h\nstruct Base { int origin; int width; };\nstruct Shape : Base { int sides; };\n"
                              "== b.cpp\n#include \"a.h\"\nint b(Base x) { return x.origin; }\n"
                              "== c.cpp\n#include \"a.h\"\nint c(Base x) { return x.origin; }\n"
                              "== d.cpp\n#include \"a.h\"\n";
    EXPECT_EQ(Offered(files + "void f(Shape s) {\n s.|\n}\n"), (Names{"sides", "origin", "width"}));
    EXPECT_EQ(Offered(files + "void f(Shape s) {\n s.width = 1;\n s.|\n}\n").front(), "width") << "used before";
}

TEST(Completion, NamesInTheCaseThatIsTypedComeFirst)
{
    const std::string shape = "struct Shape {\n int size;\n int Sides;\n};\n";
    EXPECT_EQ(Offered(shape + "void f(Shape s) {\n s.Sides = 1;\n s.Sides = 2;\n s.s|\n}\n"), (Names{"size", "Sides"}));
    EXPECT_EQ(Offered(shape + "void f(Shape s) {\n s.Sides = 1;\n s.Sides = 2;\n s.|\n}\n"), (Names{"Sides", "size"}));
    EXPECT_EQ(Offered("int COUNT, counted;\nvoid f() {\n COUNT = 1;\n COUNT = 2;\n co|\n}\n"),
              (Names{"counted", "COUNT"}));
    EXPECT_EQ(Offered("int counted;\nvoid f(int Count) {\n co|\n}\n"), (Names{"Count", "counted"})) << "a local";
}

TEST(Completion, MembersOfAScope)
{
    EXPECT_EQ(Offered("enum class Color { Red, Green };\nint x = Color::|;\n"), (Names{"Green", "Red"}));
    EXPECT_EQ(Offered("namespace a {\nint one;\n}\nint x = a::|;\n"), (Names{"one"}));
    EXPECT_EQ(Offered("struct A {\n void first();\n void second();\n};\nvoid A::first() {}\nvoid A::|() {}\n").front(),
              "second")
        << "what is declared and not defined yet";
}

TEST(Completion, EnumeratorsOfAnUnscopedEnumAreNamesOfTheScopeAroundIt)
{
    const std::string files = "== a.h\nstruct A {\n enum Kind { Round, Flat };\n enum class Strict { Rough };\n};\n"
                              "namespace n {\nenum Size { Robust };\n}\n== a.cpp\n#include \"a.h\"\n";
    EXPECT_EQ(Offered(files + "int f() { return A::Ro| }\n"), (Names{"Round"}));
    EXPECT_EQ(Offered(files + "int f() { return n::Ro| }\n"), (Names{"Robust"}));
}

TEST(Completion, WhatIsUndefinedComesFirstOnlyWhereADefinitionBegins)
{
    const std::string shape = "struct A {\n using Size = int;\n void draw();\n};\n";
    EXPECT_EQ(Offered(shape + "A::Size x;\nvoid A::|\n").front(), "draw");
    EXPECT_EQ(Offered(shape + "A::Size x;\nvoid f(A::|);\n").front(), "Size") << "a parameter";
    EXPECT_EQ(Offered("namespace n {\nvoid draw();\nstruct Size {};\n}\nn::Size x;\nn::|\n").front(), "Size")
        << "a namespace";
}

TEST(Completion, NamesThatTheTextUsesMoreComeFirst)
{
    const std::string shape = "struct Shape {\n int size;\n void draw();\n Shape* next(int n);\n int rank;\n};\n";
    EXPECT_EQ(Offered(shape + "void f(Shape s) {\n s.draw();\n s.draw();\n s.draw();\n s.size = 1;\n s.|\n}\n").front(),
              "draw");
    EXPECT_EQ(
        Offered(shape + "void f(Shape s, Shape t) {\n s.next(1)->rank = 1;\n t.draw();\n s.next(2)->|\n}\n").front(),
        "rank")
        << "behind a call of the same name";
    EXPECT_EQ(Offered("int count_all, count_one;\nvoid f() {\n count_one = 1;\n count_one = 2;\n}\n"
                      "void g() {\n count_all = 1;\n count_one = 3;\n count_one = 4;\n co|\n}\n"),
              (Names{"count_one", "count_all"}));
}

TEST(Completion, MethodsThatTheTextNamesFitAnUnknownReceiver)
{
    EXPECT_EQ(Offered("== a.h\n@interface A\n- (int) size;\n- (void) setSize: (int)x;\n- (int) sides;\n@end\n"
                      "== a.m\nvoid f(id a, Unknown *b) {\n [a setSize: 1];\n [b s|];\n}\n")
                  .front(),
              "setSize:");
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
    EXPECT_EQ(Offered("== a.h\n@interface A\n- (int) size;\n- (id) at: (int)x with: (id)y;\n@end\n"
                      "== a.m\n#import \"a.h\"\nvoid f(A *a) {\n [a |];\n}\n"),
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

TEST(Completion, KindsThatFitThePlaceComeFirst)
{
    const std::string text = "#define sh_limit 9\ntypedef struct { int n; } sh_type;\nstruct sh_tag { int n; };\n"
                             "enum Kind { sh_round };\nint sh_area(int n);\n";
    struct Case {
        const char* place;
        Names first; // in any order
        Names behind;
    };
    const Case cases[] = {
        {"int f(void) { int x = sh|; }\n", {"sh_area", "sh_limit", "sh_round"}, {"sh_tag", "sh_type"}},
        {"int f(void) { return sh|; }\n", {"sh_area", "sh_limit", "sh_round"}, {"sh_tag", "sh_type"}},
        {"int f(void) { g(1, sh|); }\n", {"sh_area", "sh_limit", "sh_round"}, {"sh_tag", "sh_type"}},
        {"int f(int n) { switch (n) { case sh|: } }\n", {"sh_limit", "sh_round"}, {"sh_area", "sh_tag", "sh_type"}},
        {"int f(void) { sh| }\n", {"sh_area", "sh_limit", "sh_tag", "sh_type"}, {"sh_round"}},
        {"static sh|\n", {"sh_limit", "sh_tag", "sh_type"}, {"sh_area", "sh_round"}},
        {"int f(const char* s, sh|);\n", {"sh_limit", "sh_tag", "sh_type"}, {"sh_area", "sh_round"}},
        {"struct sh|\n", {"sh_tag"}, {"sh_area", "sh_limit", "sh_round", "sh_type"}},
        {"int f(void) { return sizeof(sh|); }\n", {"sh_area", "sh_limit", "sh_round", "sh_tag", "sh_type"}, {}},
    };
    for (const Case& each : cases) {
        Names offered = Offered("== a.c\n" + text + each.place);
        ASSERT_EQ(offered.size(), 5U) << each.place;
        const auto middle = offered.begin() + static_cast<std::ptrdiff_t>(each.first.size());
        std::sort(offered.begin(), middle);
        std::sort(middle, offered.end());
        EXPECT_EQ(Names(offered.begin(), middle), each.first) << each.place;
        EXPECT_EQ(Names(middle, offered.end()), each.behind) << each.place;
    }
}

TEST(Completion, AnyKindIsAValueInCplusplus)
{
    EXPECT_EQ(Offered("== a.cpp\nstruct ShapeOf {\n};\nint ShapeArea();\nShapeOf f() {\n ShapeOf s;\n return Sh|\n}\n"),
              (Names{"ShapeOf", "ShapeArea"}));
}

TEST(Completion, NamesUsedBehindTheSameTokenComeFirst)
{
    EXPECT_EQ(
        Offered(
            "int count_all, count_one;\nvoid f() {\n use(0 + count_one);\n use(2 * count_all);\n use(1 + co|);\n}\n"),
        (Names{"count_one", "count_all"}));
}
