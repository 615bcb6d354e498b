// Where names occur, and what derives from a class.
#include "tests/resolve/Project.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::vector<std::string> UsesOf(const std::string& text, size_t limit = 1000)
{
    const Project project(text);
    std::vector<std::string> uses;
    static const char* const kRoles[] = {"declaration", "definition", "call", "other", "comment"};
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

TEST(References, OfANameThatNothingDeclares)
{
    EXPECT_EQ(UsesOf("int a = f(1);\n== b.cpp\nint b = f|(2); // f\n"), (Uses{"b.cpp:1:9 call", "a.cpp:1:9 call"}));
    EXPECT_EQ(UsesOf("int a;\nunsigned| b;\n"), Uses());
    EXPECT_EQ(UsesOf("#include <vec|tor>\nint vector();\n"), Uses());
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

TEST(References, OnALineThatDeclaresOnlyTheDeclarationIsOne)
{
    const struct {
        const char* text;
        Uses uses;
    } kCases[] = {
        {"int f|(int a) { return a ? f(a - 1) : 0; }\n", {"a.cpp:1:5 definition", "a.cpp:1:27 call"}},
        {"struct node| { struct node* next; };\n", {"a.cpp:1:8 definition", "a.cpp:1:22 other"}},
        {"typedef struct page page|;\n", {"a.cpp:1:16 other", "a.cpp:1:21 definition"}},
        {"struct A { A(); };\nA|::A() {}\n",
         {"a.cpp:1:8 definition", "a.cpp:1:12 declaration", "a.cpp:2:1 other", "a.cpp:2:4 definition"}},
        {"int n|; int m = n;\n", {"a.cpp:1:5 definition", "a.cpp:1:16 other"}},
        {"#define f|(x) f(x)\n", {"a.cpp:1:9 definition", "a.cpp:1:14 call"}},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(UsesOf(each.text), each.uses) << each.text;
}

TEST(References, OfALocalEndWhenTheyAreCancelled)
{
    const Project project("void f(int n) { n|; n; }\n");
    base::CancelToken cancel;
    EXPECT_EQ(project.Resolver().References(project.place, {1000, &cancel}).found.size(), 3U);
    cancel.Cancel();
    EXPECT_TRUE(project.Resolver().References(project.place, {1000, &cancel}).found.empty());
}

TEST(References, InCommentsWhenTheyAreAskedFor)
{
    const Project project(
        "== a.h\n// area\n// of areas\n== c.c\n/* area,\n area */ int ar|ea;\n#if 0\n// area\n#endif\n"
        "#define X area // area\nchar* s = \"area\"; // area");
    Uses uses;
    project.Resolver().ForEachUse(project.place, {}, resolve::Resolver::Where::AlsoComments,
                                  [&](std::string_view, const std::vector<resolve::Use>& found) {
                                      for (const resolve::Use& use : found)
                                          if (use.role == resolve::Use::Role::Comment)
                                              uses.push_back(use.path + ":" + std::to_string(use.line) + ":" +
                                                             std::to_string(use.column));
                                      return true;
                                  });
    EXPECT_EQ(uses, (Uses{"c.c:1:4", "c.c:2:2", "c.c:6:19", "c.c:7:22", "a.h:1:4"}));
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

TEST(References, LeaveOutWhatIsSomethingElseForSure)
{
    const struct {
        const char* why;
        std::string text;
        Uses uses;
    } kCases[] = {
        {"a member is not a function",
         "== a.c\nstruct file { int (*open)(void); };\nint open(void) { return 1; }\n"
         "int f(struct file* x) { return x->open() + open|(); }\n",
         {"a.c:2:5 definition", "a.c:3:44 call"}},
        {"but may follow the dots of a range",
         "== a.c\nenum { kMost = 3 };\nint a[] = { [0 ... kMost|] = 1 };\n",
         {"a.c:1:8 definition", "a.c:2:20 other"}},
        {"an enumerator of a class may follow a dot",
         "struct A { enum { kMost = 3 }; };\nint f(A a) { return a.kMost + A::kMost|; }\n",
         {"a.cpp:1:19 definition", "a.cpp:2:23 other", "a.cpp:2:34 other"}},
        {"a method of an unnamed class may, too",
         "struct { void draw|() {} } x;\nvoid f() { x.draw(); }\n",
         {"a.cpp:1:15 definition", "a.cpp:2:14 call"}},
        {"an enumerator of an unnamed class may, too",
         "struct { enum { kMost| = 3 }; } x;\nint f() { return x.kMost; }\n",
         {"a.cpp:1:17 definition", "a.cpp:2:20 other"}},
        {"a function of an unnamed namespace does not",
         "namespace { int open|() { return 1; } }\nint f(File* x) { return x->open() + open(); }\n",
         {"a.cpp:1:17 definition", "a.cpp:2:37 call"}},
        {"a macro may be anything",
         "== a.c\n#define next link\nstruct s { struct s* link; };\nint f(struct s* x) { return x->next| != 0; }\n",
         {"a.c:1:9 definition", "a.c:3:32 other"}},
        {"an enumerator of another enum",
         "== a.h\nenum class Color { Red, Green };\n== b.h\nenum class Light { Red, Off };\n"
         "== c.cpp\n#include \"a.h\"\n#include \"b.h\"\nauto x = Color::Re|d;\n",
         {"c.cpp:3:17 other", "a.h:1:20 definition"}},
        {"a field of another structure",
         "== a.h\nstruct shape { int size; };\n== b.h\nstruct ring { long size; };\n"
         "== c.c\n#include \"a.h\"\nint f(struct shape* s) { return s->si|ze; }\n",
         {"c.c:2:36 other", "a.h:1:20 definition"}},
        {"a static member that is defined without its namespace",
         "== a.h\nnamespace n { struct A { static int count; }; }\n"
         "== b.cpp\n#include \"a.h\"\nusing namespace n;\nint A::count = 1;\n"
         "== c.cpp\n#include \"a.h\"\nint f() { return n::A::cou|nt; }\n",
         {"c.cpp:2:24 other", "a.h:1:37 declaration", "b.cpp:3:8 definition"}},
        {"fields of unnamed structures may be those of a copy",
         "== a.h\ntypedef struct { int size; } shape;\n== b.h\ntypedef struct { long size; } ring;\n"
         "== c.c\n#include \"a.h\"\nint f(shape* s) { return s->si|ze; }\n",
         {"c.c:2:29 other", "a.h:1:22 definition", "b.h:1:23 definition"}},
        {"a method of another class may override it",
         "== a.h\nstruct A { void draw(); };\n== b.h\nstruct B { void draw(); };\n"
         "== c.cpp\n#include \"a.h\"\nvoid f(A a) { a.dr|aw(); }\n",
         {"c.cpp:2:17 call", "a.h:1:17 declaration", "b.h:1:17 declaration"}},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(UsesOf(each.text), each.uses) << each.why;
}

TEST(References, OfWhatOneSourceKeepsForItselfAreNotInOthers)
{
    const std::string two = "== a.c\nstatic int probe(void) { return 1; }\nint x(void) { return pro|be(); }\n"
                            "== b.c\nstatic int probe(void) { return 2; }\nint y(void) { return probe(); }\n";
    EXPECT_EQ(UsesOf(two), (Uses{"a.c:1:12 definition", "a.c:2:22 call"}));
    EXPECT_EQ(UsesOf(two + "== c.h\n#define PROBE probe()\n").back(), "c.h:1:15 call") << "a macro of a header";
    EXPECT_EQ(UsesOf(two + "== all.c\n#include \"a.c\"\n").size(), 4U) << "a source that is included";
    EXPECT_EQ(UsesOf("== a.h\nint probe(void);\n== a.c\n#include \"a.h\"\nint probe(void) { return 1; }\n"
                     "== b.c\nint y(void) { return pro|be(); }\n")
                  .size(),
              3U)
        << "a function for all";
}

TEST(References, OfWhatTheProjectDeclaresAreNotInHeadersOfTheSystem)
{
    const auto inSystem = [](const std::string& text) {
        const Uses uses = UsesOf("== /usr/include/a.h\nnamespace a { struct Slice { void draw(); }; Slice* x; }\n"
                                 "struct Base { virtual void draw(); };\nvoid g(Base b) { b.draw(); }\n" +
                                 text);
        return std::ranges::count_if(uses, [](const std::string& use) { return use.starts_with("/usr"); });
    };
    EXPECT_EQ(inSystem("== b.cpp\nnamespace b { struct Slice {}; }\nb::Sli|ce y;\n"), 0);
    EXPECT_GT(inSystem("== b.cpp\nnamespace a { struct Slice {}; }\na::Sli|ce y;\n"), 0) << "it may be the same";
    EXPECT_EQ(inSystem("== b.cpp\nstruct B { void draw(); };\nvoid f(B b) { b.dr|aw(); }\n"), 0);
    EXPECT_GT(inSystem("== b.cpp\n#include <a.h>\nstruct B : Base { void draw(); };\nvoid f(B b) { b.dr|aw(); }\n"), 0)
        << "it may override the system's";
    EXPECT_GT(inSystem("== b.cpp\nstruct B : Unknown { void draw(); };\nvoid f(B b) { b.dr|aw(); }\n"), 0)
        << "of an unknown base";
}
