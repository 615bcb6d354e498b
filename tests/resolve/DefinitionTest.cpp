// What names mean outside of functions' own declarations.
#include "tests/resolve/Project.h"

#include <gtest/gtest.h>

TEST(Definition, KindsThatFitTheUse)
{
    ExpectDefinitions({
        {"a call wants something callable",
         "struct area { int a; };\nint $area(int x) { return x; }\nint y = ar|ea(1);\n"},
        {"a tag wants a structure",
         "== a.c\nint area(int x) { return x; }\nstruct $area { int a; };\nstruct ar|ea y;\n"},
        {"the last of several macros",
         "== a.h\n#define N 1\n#undef N\n#define $N 2\n== a.c\n#include \"a.h\"\nint y = N|;\n"},
        {"a condition wants a macro", "== a.c\nint N;\n#define $N 1\n#ifdef N|\n#endif\n"},
        {"a class before its constructor",
         "class $Shape {\npublic:\n Shape(int n);\n};\nvoid f() { auto s = new Sha|pe(1); }\n"},
        {"a type before '::'", "struct $A { static int n; };\nint x = A|::n;\n"},
        {"in a macro's body", "int $limit;\n#define LIMIT (lim|it + 1)\n"},
    });
}

TEST(Definition, NearestFile)
{
    ExpectDefinitions({
        {"an included header before others", "== x/limits.h\n#define LIMIT 1\n== y/limits.h\n#define $LIMIT 2\n== "
                                             "y/a.c\n#include \"limits.h\"\nint n = LIMIT|;\n"},
        {"through another header", "== inc/a.h\n#include <sub/b.h>\n== inc/sub/b.h\nstruct $thing { int n; };\n== "
                                   "other/c.h\nstruct thing { int m; };\n"
                                   "== a.c\n#include <a.h>\nstruct th|ing t;\n"},
        {"a static function of another source comes last",
         "== a.c\nstatic int probe(void) { return 0; }\n== b.c\nstatic int $probe(void) { return 1; }\nint x(void) { "
         "return pro|be(); }\n"},
        {"the source that belongs to the header", "== x/shape.h\nint area(int n);\n== x/shape.c\nint $area(int n) { "
                                                  "return n; }\n== b/other.c\nstatic int area(int n) { return 2; }\n"
                                                  "== a.c\n#include \"x/shape.h\"\nint f(void) { return ar|ea(1); }\n"},
        {"a definition wherever it is, when its declaration is included",
         "== x/shape.h\nint area(int n);\n== z/far.c\nint $area(int n) { return n; }\n"
         "== a.c\n#include \"x/shape.h\"\nint f(void) { return ar|ea(1); }\n"},
        {"project before system",
         "== /usr/include/thing.h\nint size_of_thing(void);\n== lib/thing.c\nint $size_of_thing(void) { return 1; "
         "}\n== a.c\nint f(void) { return size_of_|thing(); }\n"},
    });
}

TEST(Definition, OfAnIncludeIsTheFile)
{
    const Project include("== inc/sub/b.h\nint n;\n== other/b.h\nint n;\n== a.c\n#include <sub/|b.h>\n");
    EXPECT_EQ(Lines(include.Definition()), std::vector<std::string>{"inc/sub/b.h:1 include"});
}

TEST(Definition, OfAnIncludeIsTheFileThatCompilersFindByThatName)
{
    struct Case {
        const char* why;
        const char* files;
        const char* include;
        const char* found;
    };
    for (const Case& c : {
             Case{"not a header of the same name below",
                  "== /usr/include/linux/stddef.h\n== "
                  "/usr/lib/gcc/x86_64-linux-gnu/12/include/stddef.h\n",
                  "<stddef.h>", "/usr/lib/gcc/x86_64-linux-gnu/12/include/stddef.h:1 include"},
             Case{"C++", "== /usr/include/c++/12/algorithm\n== /usr/include/c++/12/ext/algorithm\n", "<algorithm>",
                  "/usr/include/c++/12/algorithm:1 include"},
             Case{"of the machine", "== /usr/include/a/sys/types.h\n== /usr/include/x86_64-linux-gnu/sys/types.h\n",
                  "<sys/types.h>", "/usr/include/x86_64-linux-gnu/sys/types.h:1 include"},
             Case{"of the machine's C++",
                  "== /usr/include/boost/bits/c++io.h\n== "
                  "/usr/include/x86_64-linux-gnu/c++/12/bits/c++io.h\n",
                  "<bits/c++io.h>", "/usr/include/x86_64-linux-gnu/c++/12/bits/c++io.h:1 include"},
             Case{"one that needs to be told where", "== /usr/include/glib-2.0/glib.h\n", "<glib.h>",
                  "/usr/include/glib-2.0/glib.h:1 include"},
         }) {
        const Project project(std::string(c.files) + "== a.cpp\n#include " + c.include[0] + "|" + (c.include + 1) +
                              "\n");
        EXPECT_EQ(Lines(project.Definition()), std::vector<std::string>{c.found}) << c.why;
    }
    const Project both("== stddef.h\n== /usr/include/stddef.h\n== /usr/include/linux/stddef.h\n== a.cpp\n"
                       "#include \"|stddef.h\"\n");
    EXPECT_EQ(Lines(both.Definition()),
              (std::vector<std::string>{"stddef.h:1 include", "/usr/include/stddef.h:1 include"}));
}

TEST(Definition, DefinitionsAndDeclarations)
{
    const std::string header = "== shape.h\nint area(int n);\n";
    const std::string source = "== shape.c\n#include \"shape.h\"\nint area(int n) { return n; }\n";
    const std::string user = "== a.c\n#include \"shape.h\"\nint f(void) { return ar|ea(1); }\n";
    EXPECT_EQ(First(Project(header + source + user).Definition()), "shape.c:2");
    EXPECT_EQ(First(Project(header + source + user).Declaration()), "shape.h:1");
    EXPECT_EQ(First(Project(header + user).Definition()), "shape.h:1");
    EXPECT_EQ(
        First(Project(header + "== shape.c\n#include \"shape.h\"\nint ar|ea(int n) { return n; }\n").Definition()),
        "shape.h:1")
        << "on a definition";
    EXPECT_EQ(First(Project("== shape.h\nint ar|ea(int n);\n" + source).Definition()), "shape.c:2") << "and back";
}

TEST(Definition, Scopes)
{
    ExpectDefinitions({
        {"the class around the method", "struct A { int n; };\nstruct B {\n int $n;\n int f() { return n|; }\n};\n"},
        {"out of the class", "struct A { int n; };\nstruct B {\n int $n;\n int f();\n};\nint B::f() { return n|; }\n"},
        {"a base", "struct A { int n; };\nstruct Base {\n int $n;\n};\nstruct B : public Base {\n int f();\n};\nint "
                   "B::f() { return n|; }\n"},
        {"the namespace around it", "int n;\nnamespace a {\nint $n;\nint f() { return n|; }\n}\n"},
        {"a namespace that is used",
         "namespace b { int n; }\nnamespace a {\nint $n;\n}\nusing namespace a;\nint f() { return n|; }\n"},
        {"a name that is used", "namespace b { struct T {}; }\nnamespace a {\nstruct $T {};\n}\nusing a::T;\nT| x;\n"},
        {"a qualified name", "namespace b { int n; }\nnamespace a {\nint $n;\n}\nint m = a::n|;\n"},
        {"an inline namespace",
         "namespace b { int n; }\nnamespace a { inline namespace v1 {\nint $n;\n} }\nint m = a::n|;\n"},
        {"an alias of a namespace",
         "namespace b { int n; }\nnamespace a { namespace c {\nint $n;\n} }\nnamespace d = a::c;\nint m = d::n|;\n"},
        {"an enumerator of a scoped enum", "enum class A { X };\nenum class B {\n $X };\nB b = B::X|;\n"},
        {"an enumerator of a plain enum of a class", "enum { X };\nstruct A { enum B {\n $X }; };\nint n = A::X|;\n"},
        {"a base of the qualifier",
         "struct Base {\n static int $n;\n};\nstruct A : Base {};\nstruct C { static int n; };\nint m = A::n|;\n"},
        {"the number of arguments chooses",
         "struct A {\n int f(int a);\n int $f(int a, int b);\n void g() { f|(1, 2); }\n};\n"},
        {"of defaults, too",
         "struct A {\n int f(int a);\n int $f(int a, int b, int c = 1);\n void g() { f|(1, 2); }\n};\n"},
    });
}

TEST(Definition, Overloads)
{
    const std::string shape = "struct Shape {\n void set(const char* s);\n void set(int n);\n void set(double d);\n"
                              " int at(int i) const;\n int& at(int i);\n};\n";
    const auto expect = [&](unsigned line, const std::string& use) {
        const Project project(shape + use);
        EXPECT_EQ(First(project.Definition()), "a.cpp:" + std::to_string(line)) << use << "\n" << project.Explain();
    };
    expect(2, "void f(Shape s) { s.set|(\"a\"); }");
    expect(3, "void f(Shape s) { s.set|(14); }");
    expect(4, "void f(Shape s) { s.set|(1.5); }");
    expect(2, "void f(Shape s, const char* text) { s.set|(text); }");
    expect(4, "void f(Shape s, double d) { s.set|(d); }");
    expect(6, "void f(Shape s) { s.at|(1); }");
    expect(5, "void f(const Shape& s) { s.at|(1); }");
    ExpectDefinitions({
        {"from a declaration to the definition with the same parameters",
         "struct A {\n void f(int n);\n void f|(char* s);\n};\nvoid A::f(int n) {}\nvoid A::$f(char *s) {}\n"},
        {"and back",
         "struct A {\n void f(int n);\n void $f(char* s);\n};\nvoid A::f(int n) {}\nvoid A::f|(char *s) {}\n"},
        {"a call on the line of its own declaration",
         "struct A {\n void f(int n, int m);\n void f(int n) { f|(n, 1); }\n};\nvoid A::$f(int n, int m) {}\n"},
    });
}

TEST(Definition, MacrosThatMakeFunctions)
{
    ExpectDefinitions({
        {"the macro, not the function that it looks like",
         "== gtest.h\n#define $TEST_F(a, b) class a##b : public a { void Body(); }; void a##b::Body()\n"
         "== a.cpp\n#include \"gtest.h\"\nTEST_F|(Suite, Grows) {\n}\n"},
        {"the class whose method it is", "#define TEST_F(a, b) void a##b()\nint Size();\nstruct Suite {\n int "
                                         "$Size();\n};\nTEST_F(Suite, Grows) {\n Size|();\n}\n"},
        {"its arguments are no parameters",
         "#define TEST(a, b) void a##b()\nint $Grows();\nTEST(Suite, Grows) {\n Grows|();\n}\n"},
    });
}

TEST(Definition, Receivers)
{
    const std::string two = "struct A {\n int size;\n};\nstruct B {\n int $size;\n B* next();\n};\n";
    const auto expect = [&](const std::string& why, const std::string& use) {
        const Project project(two + use);
        EXPECT_EQ(First(project.Definition()), project.expected.front()) << why << "\n"
                                                                         << use << "\n"
                                                                         << project.Explain();
    };
    expect("a variable", "void f() { B b; b.size|; }");
    expect("a pointer", "void f(B* b) { b->size|; }");
    expect("a global", "B b; void f() { b.size|; }");
    expect("a reference", "void f(const B& b) { b.size|; }");
    expect("a call", "B* make(int n); void f() { make(1)->size|; }");
    expect("a chain", "void f(B* b) { b->next()->next()->size|; }");
    expect("an index", "void f() { B b[3]; b[1].size|; }");
    expect("an index of a pointer to pointers", "void f(B** b) { b[1]->size|; }");
    expect("a dereference", "void f(B** b) { (*b)->size|; }");
    expect("a cast", "void f(void* p) { ((B*)p)->size|; }");
    expect("a static cast", "void f(void* p) { static_cast<B*>(p)->size|; }");
    expect("a new object", "void f() { (new B(1))->size|; }");
    expect("a construction", "void f() { B().size|; }");
    expect("auto of a new object", "void f() { auto b = new B; b->size|; }");
    expect("auto of a call", "B* make(int n); void f() { auto b = make(1); b->size|; }");
    expect("auto of a construction", "void f() { auto b = B(1); b.size|; }");
    expect("a typedef", "typedef B* Pointer; void f(Pointer p) { p->size|; }");
    expect("an alias", "using Other = B; void f(Other* p) { p->size|; }");
    expect("a smart pointer", "void f(std::unique_ptr<B> p) { p->size|; }");
    expect("and its get", "void f(std::shared_ptr<B> p) { p.get()->size|; }");
    expect("made without its name", "void f() { auto p = std::make_shared<B>(1); p->size|; }");
    expect("a container", "void f(std::vector<B> v) { v[1].size|; }");
    expect("of pointers", "void f(std::vector<B*>& v) { v.back()->size|; }");
    expect("a map's iterator", "void f(std::map<int, B> m) { auto it = m.find(1); it->second.size|; }");
    expect("a map's index", "void f(std::map<int, B*> m) { m[1]->size|; }");
    expect("an iterator with its type", "void f(std::vector<B>::iterator it) { it->size|; }");
    expect("a range", "void f(std::vector<B> v) { for (auto& b : v) b.size|; }");
    expect("a range over a map", "void f(std::map<int, B> m) { for (auto& [k, b] : m) b.size|; }");
    expect("a pair", "void f(std::pair<int, B> p) { p.second.size|; }");
    expect("an own smart pointer",
           "template <class T> struct Ref { T* operator->() const; };\nvoid f(Ref<B> r) { r->size|; }");
    expect("an own container",
           "template <class T> struct Array { T& operator[](int i); };\nvoid f(Array<B> r) { r[1].size|; }");
    expect("this", "struct C : B { void f() { this->size|; } };");
    expect("an optional", "void f(std::optional<B> o) { o->size|; }");
    expect("decltype", "B b; void f() { decltype(b) c; c.size|; }");
    expect("a designated initialiser", "B b = { .size| = 1 };");
    expect("a conditional", "void f(B* a, B* b) { (x ? a : b)->size|; }");
    expect("a moved value", "void f(B b) { std::move(b).size|; }");
}

TEST(Definition, ReceiversBehindBracketsThatNothingCloses)
{
    const std::string shape = "struct Shape {\n Shape All(int);\n int $area;\n};\nvoid f(Shape s) {\n ";
    for (const std::string use : {"auto made = s.All(1)(s;\n made.ar|ea;\n", "auto made = s.All(1)[s;\n made.ar|ea;\n",
                                  "for (auto made : made.All(1)(made;\n made.ar|ea;\n"}) {
        const Project project(shape + use);
        EXPECT_EQ(First(project.Definition()), project.expected.front()) << use << "\n" << project.Explain();
    }
}

TEST(Definition, InBracesThatAreNestedToSlowUsDown)
{
    for (const std::string brace : {"{", "{ {", "= {", "{ x, {"}) {
        std::string text = "void f(int $area)\n{";
        for (int i = 0; i < 200; ++i)
            text += brace;
        const Project project(text + " ar|ea");
        EXPECT_EQ(First(project.Definition()), project.expected.front()) << brace;
    }
}

TEST(Definition, ReceiversInC)
{
    ExpectDefinitions({
        {"an unnamed structure",
         "== a.c\nstruct o { int n; };\ntypedef struct {\n int $n;\n} thing;\nvoid f(thing *t) { t->n|; }\n"},
        {"an unnamed union inside", "== a.c\nstruct o { int n; };\nstruct thing { union {\n int $n;\n long m; }; "
                                    "};\nvoid f(struct thing *t) { t->n|; }\n"},
        {"a named one inside", "== a.c\nstruct o { int n; };\nstruct thing { struct {\n int $n;\n } in; };\nvoid "
                               "f(struct thing *t) { t->in.n|; }\n"},
        {"container_of",
         "== a.c\nstruct o { int n; };\nstruct thing {\n int $n;\n int list; };\n#define container_of(p, t, m) ((t "
         "*)p)\nvoid f(int *l) { container_of(l, struct thing, list)->n|; }\n"},
        {"a table of operations", "== a.c\nstruct o { int n; };\nstruct thing {\n int $n;\n};\nstatic const struct "
                                  "thing t[] = { { .n| = 1 }, };\n"},
        {"a pointer to a function", "== a.c\nstruct o { int n; };\nstruct thing {\n int $n;\n};\nstruct ops { struct "
                                    "thing *(*get)(int); };\nvoid f(struct ops *p) { p->get(1)->n|; }\n"},
        {"the structure of the including file",
         "== x/a.h\nstruct thing { int n; };\n== y/b.h\nstruct thing { int $n; };\n== y/a.c\n#include \"b.h\"\nint "
         "f(struct thing *t) { return t->n|; }\n"},
    });
}

TEST(Definition, Messages)
{
    const std::string classes =
        "@interface A : NSObject\n- (int) size;\n- (id) at: (int)x with: (id)y;\n@end\n"
        "@interface B : NSObject\n- (int) $size;\n- (id) at: (int)x with: (id)y;\n+ (B*) make;\n@end\n";
    const auto expect = [&](const std::string& why, const std::string& use) {
        const Project project("== a.m\n" + classes + use);
        EXPECT_EQ(First(project.Definition()), "a.m:6") << why << "\n" << use << "\n" << project.Explain();
    };
    expect("a variable", "void f(B *b) { [b size|]; }");
    expect("a message's result", "void f(void) { [[B make] size|]; }");
    expect("a new object", "void f(void) { [[[B alloc] init] size|]; }");
    expect("with the dot", "void f(B *b) { b.size|; }");
    expect("a class", "@interface C : B\n@end\n@implementation C\n- (void) f { [self size|]; }\n@end");
    expect("of the superclass",
           "@interface C : B\n- (int) size;\n@end\n@implementation C\n- (int) f { return [super size|]; }\n@end");
    const Project selector("== a.m\n" + classes + "void f(B *b) { [b at: 1 wi|th: nil]; }");
    EXPECT_EQ(First(selector.Definition()), "a.m:7") << selector.Explain();
    ExpectDefinitions({
        {"a selector at its declaration",
         "== a.m\n@interface A\n- (id) at: (int)x wi|th: (id)y;\n@end\n@implementation A\n- (id) $at: (int)x with: "
         "(id)y\n{\n return nil;\n}\n@end\n"},
        {"and back", "== a.m\n@interface A\n- (id) $at: (int)x with: (id)y;\n@end\n@implementation A\n- (id) a|t: "
                     "(int)x with: (id)y\n{\n return nil;\n}\n@end\n"},
        {"an instance variable",
         "== a.m\nint n;\n@interface A : B\n{\n int $n;\n}\n@end\n@implementation A\n- (int) f { return n|; }\n@end\n"},
        {"of the superclass", "== a.m\n@interface B\n{\n int $n;\n}\n@end\n@interface A : B\n@end\n@implementation "
                              "A\n- (int) f { return n|; }\n@end\n"},
        {"a variable before the method of its name",
         "== a.m\n@interface A\n{\n id $list;\n}\n- (id) list;\n@end\n@implementation A\n- (id) list { return nil; "
         "}\n- (void) f { [list| count]; }\n@end\n"},
        {"a category at its implementation", "== a.m\n@interface A ($Cat)\n@end\n@implementation A| (Cat)\n@end\n"},
    });
}
