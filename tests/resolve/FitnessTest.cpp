// What is offered first behind an operator before anything is typed.
#include "tests/resolve/Project.h"

#include <gtest/gtest.h>

namespace {

struct FirstCase {
    const char* why;
    const char* text;
    const char* first;
};

std::string FirstOffered(const std::string& text)
{
    const Project project(text);
    const resolve::Candidates offered = project.Complete();
    return offered.found.empty() ? "" : std::string(offered.found.front().symbol.name);
}

void ExpectFirst(const std::vector<FirstCase>& cases)
{
    for (const FirstCase& each : cases)
        EXPECT_EQ(FirstOffered(each.text), each.first) << each.why << "\n" << each.text;
}

} // namespace

TEST(Fitness, OfMembersThatThePlaceCannotUseIsLow)
{
    ExpectFirst({
        {"private", "class A {\n int hidden;\npublic:\n int open;\n};\nint f(A a) {\n return 1 + a.|;\n}\n", "open"},
        {"protected", "class A {\nprotected:\n int hidden;\npublic:\n int open;\n};\nvoid f(A* a) {\n a->|\n}\n",
         "open"},
        {"the class itself uses it",
         "class A {\n int hidden;\n int f(A a) {\n  a.hidden = 1;\n  return a.|;\n }\n"
         "public:\n int open;\n};\n",
         "hidden"},
    });
}

TEST(Fitness, FollowsWhatTheTextWants)
{
    const std::string shape = "struct Base {};\nstruct A {\n int size() const;\n void draw();\n Base* base();\n"
                              " const char* name() const;\n bool isRound() const;\n A* next;\n};\n";
    const auto first = [&](const std::string& body) { return FirstOffered(shape + body); };
    EXPECT_EQ(first("void f(A a) {\n a.|\n}\n"), "draw") << "a statement";
    EXPECT_EQ(first("void f(A a, int n) {\n if (n)\n  a.|\n}\n"), "draw") << "a statement";
    EXPECT_NE(first("int f(A a) {\n return 1 + a.|;\n}\n"), "draw") << "an operand has a value";
    EXPECT_EQ(first("void f(A a) {\n Base* b = a.|;\n}\n"), "base");
    EXPECT_EQ(first("void f(A a, A c) {\n c.next = a.|;\n}\n"), "next");
    EXPECT_EQ(first("const char* f(A* a) {\n return a->|;\n}\n"), "name");
    EXPECT_EQ(first("void f(A a) {\n if (!a.|)\n}\n"), "isRound");
    EXPECT_EQ(first("void f(A a) {\n while (a.|)\n}\n"), "isRound");
}

TEST(Fitness, OfWhatIsDeclaredNextIsHigh)
{
    ExpectFirst({
        {"nothing follows", "struct A { int a, b, c; };\nvoid f(A* x) {\n x->b = 0;\n x->c = 0;\n x->|\n}\n", "c"},
        {"each case once",
         "enum class E { North, East, South };\nint f(E e) {\n switch (e) {\n case E::North:\n"
         "  return 1;\n case E::|:\n }\n}\n",
         "East"},
        {"cases of another switch count",
         "enum class E { North, East };\nint f(E e) {\n switch (e) {\n"
         " case E::East:\n  return 1;\n case E::North:\n  return 2;\n }\n"
         " switch (e) {\n case E::North:\n  return 3;\n case E::|:\n }\n}\n",
         "East"},
    });
    const Project project("struct A { int a, b, c, d, e; };\nvoid f(A* x) {\n x->c = 0;\n x->|\n}\n");
    const resolve::Candidates offered = project.Complete();
    ASSERT_EQ(offered.found.size(), 5U);
    EXPECT_EQ(offered.found[0].symbol.name, "c") << "used itself";
    EXPECT_EQ(offered.found[1].symbol.name, "d");
}

TEST(Fitness, NamesThatTheProjectUsesComeBeforeOthers)
{
    const std::string shape = "== a.h\nstruct A {\n int rare;\n int never;\n int common;\n};\n";
    const std::string uses = "== b.cpp\nint x = common + rare;\n== c.cpp\nint y = common;\n== d.cpp\nint z = common;\n";
    const std::string asked = "== e.cpp\n#include \"a.h\"\nint f(A a) {\n return 1 + a.|;\n}\n";
    EXPECT_EQ(FirstOffered(shape + uses + asked), "common");
    EXPECT_EQ(FirstOffered(shape + asked), "rare") << "as they are declared";
}

TEST(Fitness, InScopesDependsOnTheSortOfName)
{
    const std::string scope = "namespace n {\nvoid draw();\nstruct Size {};\nenum { Round };\n}\n";
    EXPECT_EQ(FirstOffered(scope + "void f(const n::|);\n"), "Size");
    EXPECT_EQ(FirstOffered(scope + "n::|\n"), "Size") << "outside of functions";
    EXPECT_EQ(FirstOffered(scope + "int f(int x) {\n switch (x) {\n case n::|\n }\n}\n"), "Round");
    EXPECT_EQ(FirstOffered(scope + "int f(int x) {\n return n::|;\n}\n"), "Round") << "draw() has no value";
}

TEST(Fitness, NamesBehindANamespaceThatAMacroOpensAreThoseThatTheTextUses)
{
    EXPECT_EQ(
        FirstOffered("== far.h\nnamespace impl {\nint other();\n}\n== a.cpp\nOPEN_NAMESPACE\nint count_all();\n"
                     "CLOSE_NAMESPACE\nint f() {\n return impl::count_all();\n}\nint g() {\n return impl::|;\n}\n"),
        "count_all");
}

TEST(Fitness, OfMembersOfAnotherClassOfThatNameIsNone)
{
    const Project project("== a.h\nstruct Buffer {\n int size;\n};\n== b.h\nstruct Buffer {\n int other;\n};\n"
                          "== c.cpp\n#include \"a.h\"\nvoid f(Buffer b) {\n b.|\n}\n");
    const resolve::Candidates offered = project.Complete();
    ASSERT_EQ(offered.found.size(), 1U);
    EXPECT_EQ(offered.found.front().symbol.name, "size");
}

TEST(Fitness, BehindColonsWithoutAScopeGlobalNamesAreOffered)
{
    EXPECT_EQ(FirstOffered("int count_all();\nnamespace n {\nint count_few();\nint f() {\n return ::co|;\n}\n}\n"),
              "count_all");
    EXPECT_EQ(FirstOffered("== a.h\nint count_all();\n== b.cpp\n#include \"a.h\"\nint f() {\n return ::cou|;\n}\n"),
              "count_all");
}
