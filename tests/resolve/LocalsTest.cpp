// Names that a function declares.
#include "tests/resolve/Project.h"

#include <gtest/gtest.h>

TEST(Locals, Variables)
{
    ExpectDefinitions({
        {"a variable", "void f() {\n int $n = 1;\n g(n|);\n}\n"},
        {"at its own declaration", "void f() {\n int $n|;\n}\n"},
        {"one of several", "void f() {\n int a = 1,\n *$b = 0,\n c;\n g(b|);\n}\n"},
        {"the inner one", "void f() {\n int n;\n {\n  int $n;\n  g(n|);\n }\n}\n"},
        {"after another declaration", "int g(int a) const;\nvoid f(int $n)\n{\n g(n|);\n}\n"},
        {"a closed block's is not visible", "void f() {\n int $n;\n {\n  int n;\n }\n g(n|);\n}\n"},
        {"a parameter", "void f(int a,\n char *$b)\n{\n g(b|);\n}\n"},
        {"a macro between type and name", "void f(void) {\n char __user *$p = q;\n g(p|);\n}\n"},
        {"an attribute", "void f(void) {\n int $p __attribute__((unused)) = 1;\n g(p|);\n}\n"},
        {"a pointer to a function", "void f(void) {\n int (*$call)(int);\n call|(1);\n}\n"},
        {"an array", "void f(void) {\n char $buffer[10][20], c;\n g(buffer|);\n}\n"},
        {"in the initialiser of a later one", "void f(void) {\n int $a = 1;\n int b = a| * 2;\n}\n"},
        {"a product is not a declaration", "int $b;\nvoid f(void) {\n int a;\n g(a * b);\n h(b|);\n}\n"},
        {"a pointer at the start of a statement is one", "void f(void) {\n T * $b;\n h(b|);\n}\n"},
        {"a call is not a declaration", "int $x;\nvoid f(void) {\n g(x);\n h(x|);\n}\n"},
        {"a cast is not a declaration", "int $x;\nvoid f(void) {\n y = (int) x;\n h(x|);\n}\n"},
        {"a return is not a declaration", "int $x;\nint f(void) {\n if (y) return x;\n return x|;\n}\n"},
        {"brackets of a template", "void f() {\n std::map<int, std::vector<T>> $m;\n g(m|);\n}\n"},
        {"a construction", "void f() {\n Shape $shape(1, 2);\n g(shape|);\n}\n"},
        {"in braces", "void f() {\n Shape $shape{1, 2};\n g(shape|);\n}\n"},
        {"a structured binding", "void f() {\n auto [a, $b] = g();\n h(b|);\n}\n"},
        {"and by reference", "void f() {\n for (const auto& [$a, b] : m)\n  h(a|);\n}\n"},
        {"after a label", "void f() {\n case 1: int $n;\n g(n|);\n}\n"},
        {"a local type", "void f() {\n struct $Pair { int a; };\n Pair| p;\n}\n"},
        {"a local enumerator", "void f() {\n enum { A, $B };\n g(B|);\n}\n"},
        {"a name that is a word of Objective-C", "void f() {\n buffer in, $out;\n g(in, out|);\n}\n"},
        {"at its own declaration", "void f() {\n buffer $out|;\n}\n"},
        {"with an initialiser", "void f() {\n int $in = 1;\n g(in|);\n}\n"},
        {"a pointer of that name", "void f() {\n char *$out = 0, *end;\n g(out|);\n}\n"},
        {"an array of that name", "void f() {\n char $out[10];\n g(out|);\n}\n"},
        {"a pointer to a function of that name", "void f() {\n int (*$out)(int);\n out|(1);\n}\n"},
        {"a parameter of that name", "void f(const char *in,\n char $out)\n{\n g(out|);\n}\n"},
        {"a local alias", "void f() {\n using $Map = std::map<int, int>;\n Map| m;\n}\n"},
    });
}

TEST(Locals, Statements)
{
    ExpectDefinitions({
        {"of a for", "void f() {\n for (int $i = 0; i < 3; ++i)\n  g(i|);\n}\n"},
        {"in its own condition", "void f() {\n for (int $i = 0; i| < 3; ++i)\n  g(i);\n}\n"},
        {"not after it", "int $i;\nvoid f() {\n for (int i = 0; i < 3; ++i) { g(i); }\n h(i|);\n}\n"},
        {"of two nested ones", "void f() {\n for (int $i = 0; ; ) for (int j = 0; ; ) { g(i|); }\n}\n"},
        {"of an if", "void f() {\n if (auto $p = g()) {\n  h(p|);\n }\n}\n"},
        {"of an if, in its else", "void f() {\n if (int $p = g(); p > 1) {\n } else {\n  h(p|);\n }\n}\n"},
        {"of a range", "void f() {\n for (auto& $each : all) {\n  each|.g();\n }\n}\n"},
        {"of a catch", "void f() {\n try { g(); } catch (const Error& $e) {\n  h(e|);\n }\n}\n"},
        {"of a loop made by a macro",
         "void f() {\n struct item *$pos;\n list_for_each_entry(pos, h, l) { g(pos|); }\n}\n"},
        {"a label", "void f(void) {\n if (x) goto done|;\n g();\n$done:\n h();\n}\n"},
        {"a later declaration does not count", "int $n;\nvoid f() {\n g(n|);\n int n;\n}\n"},
        {"old parameters", "== a.c\nint f(a, b)\n  int a;\n  char *$b;\n{\n return g(b|);\n}\n"},
        {"parameters of a macro", "#define TWICE($x) ((x|) + (x))\n"},
        {"branches of a condition", "void f(int $a) {\n#if X\n if (a) {\n#else\n if (!a) {\n#endif\n g(a|);\n }\n}\n"},
    });
}

TEST(Locals, LambdasAndTemplates)
{
    ExpectDefinitions({
        {"a lambda's parameter", "void f() {\n run([&](int $n) {\n  g(n|);\n });\n}\n"},
        {"a captured variable", "void f() {\n int $n;\n run([&n] { g(n|); });\n}\n"},
        {"in the list of captures", "void f() {\n int $n;\n run([&n|] { g(n); });\n}\n"},
        {"a capture that declares", "void f() {\n run([$n = 1] { g(n|); });\n}\n"},
        {"a template's parameter", "template <class $T>\nvoid f(T| x) { }\n"},
        {"in the body", "template <class $T, int N>\nvoid f() {\n T| x;\n}\n"},
        {"of a class", "template <class $T>\nclass A {\n T| x;\n};\n"},
        {"of a class, in a method", "template <class $T>\nclass A {\n void f() { T| x; }\n};\n"},
        {"a parameter of a prototype", "void f(int $a|, int b);\n"},
        {"in a constructor's initialisers", "struct A {\n int n;\n A(int $count) : n(count|) {}\n};\n"},
        {"out of the class", "struct A {\n int n;\n A(int count);\n};\nA::A(int $count) : n(count|) {\n}\n"},
    });
}

TEST(Locals, ObjectiveC)
{
    ExpectDefinitions({
        {"a method's parameter", "== a.m\n@implementation A\n- (void) at: (int)$x with: (id)y\n{\n g(x|);\n}\n@end\n"},
        {"a block's parameter", "== a.m\n@implementation A\n- (void) a\n{\n [b each: ^(id $x) { g(x|); }];\n}\n@end\n"},
        {"of that name in a loop",
         "== a.m\n@implementation A\n- (void) a\n{\n for (id $out in y) { g(out|); }\n}\n@end\n"},
        {"before its type", "== a.m\nvoid f(in id a,\n inout id $b)\n{\n g(b|);\n}\n"},
        {"of a loop", "== a.m\n@implementation A\n- (void) a\n{\n for (id $x in y) { g(x|); }\n}\n@end\n"},
        {"a variable", "== a.m\n@implementation A\n- (void) a\n{\n NSString *$x = @\"a\";\n [x| length];\n}\n@end\n"},
    });
}

TEST(Locals, NothingInCommentsAndStrings)
{
    ExpectDefinitions({
        {"a comment", "int n; // n|\n"},
        {"a string", "int n; const char* s = \"n|\";\n"},
    });
}
