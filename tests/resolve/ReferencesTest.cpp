// Where names occur, and what derives from a class.
#include "tests/resolve/Project.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::string> UsesOf(const std::string& text, size_t limit = 1000)
{
    const Project project(text);
    std::vector<std::string> uses;
    static const char* const kRoles[] = {"declaration", "definition", "call", "other"};
    for (const resolve::Use& use : project.Resolver().References(project.place, {limit}).found)
        uses.push_back(use.path + ":" + std::to_string(use.line) + ":" + std::to_string(use.column) + " " +
                       kRoles[static_cast<size_t>(use.role)]);
    return uses;
}

using Uses = std::vector<std::string>;

} // namespace

TEST(References, OfAFunctionInAllFilesThatMentionIt)
{
    const std::string project = "== a.h\nint area(int n);\n== b.c\n#include \"a.h\"\nint area(int n) { return n; }\n"
                                "== c.c\n#include \"a.h\"\n// area\n#define AREA area(1)\nint x = ar|ea(2);\n";
    EXPECT_EQ(UsesOf(project), (Uses{"c.c:3:14 call", "c.c:4:9 call", "a.h:1:5 declaration", "b.c:2:5 definition"}));
    EXPECT_EQ(UsesOf(project, 2).size(), 2U);
}

TEST(References, NotInBranchesThatNoCompilerReads)
{
    EXPECT_EQ(
        UsesOf("int n;\n#if 0\nint a = n;\n# ifdef X\nint b = n;\n# endif\n#else\nint c = n|;\n#endif\nint d = n;\n"),
        (Uses{"a.cpp:1:5 definition", "a.cpp:8:9 other", "a.cpp:10:9 other"}));
}

TEST(References, OfALocalInItsScope)
{
    EXPECT_EQ(UsesOf("int n;\nvoid f(int n) {\n g(n|);\n { int n; h(n); }\n}\nint m = n;\n"),
              (Uses{"a.cpp:2:12 definition", "a.cpp:3:4 other"}));
}

TEST(Implementations, OfAClassAndAMethod)
{
    const std::string classes =
        "struct Shape { virtual void draw(); };\nstruct Circle : Shape { void draw() override {} };\n"
        "struct Ring : Circle { void draw() override {} };\n";
    const auto implementations = [&](const std::string& use) {
        const Project project(classes + use);
        return Lines(project.Resolver().Implementations(project.place, {}));
    };
    EXPECT_EQ(implementations("Sha|pe* s;\n"), (Uses{"a.cpp:2 scope", "a.cpp:3 scope"}));
    EXPECT_EQ(implementations("void f(Shape* s) { s->dr|aw(); }\n"), (Uses{"a.cpp:2 scope", "a.cpp:3 scope"}));
}

TEST(Explain, SaysHowTheAnswerWasFound)
{
    const Project project("struct A { int n; };\nvoid f(A* a) { a->n|; }\n");
    EXPECT_EQ(project.Explain(), "name: n\nthe type of 'a' is 'A'\nclass A in a.cpp\n"
                                 "1. a.cpp:1 member (member): a member of 'A', the type before it\n");
}
