#include "tagging/tokens/Dialect.h"

#include <gtest/gtest.h>

namespace tagging {
namespace {

struct DialectCase {
    const char* why;
    const char* text;
    bool isCplusplus;
};

const DialectCase kDialects[] = {
    {"a class", "class A { int a; };", true},
    {"a class that is declared", "int a;\nclass A;", true},
    {"a derived class", "class A : public B {};", true},
    {"a class with a macro before its name", "class EXPORT A {};", true},
    {"a struct named so", "struct class *class_get(struct class *class);", false},
    {"a parameter named so", "void f(int class, int template, int namespace);", false},
    {"a template", "template <class T> struct A;", true},
    {"a namespace", "namespace n { }", true},
    {"an unnamed namespace", "namespace { }", true},
    {"a qualified name", "int f(std::string s);", true},
    {"a using declaration", "using A = int;", true},
    {"sections of a class", "struct A { int a; private: int b; };", true},
    {"a bit field named so", "struct A { int private : 3; };", false},
    {"a member named so", "struct A { void *private; int public; };", false},
    {"a label", "default: a ? b : c;", false},
    {"virtual functions", "struct A { virtual void f(); };", true},
    {"an operator", "bool operator==(A a, B b);", true},
    {"a member named operator", "x = a->operator;", false},
    {"a linkage that nothing guards", "extern \"C\" { int f(); }", true},
    {"a guarded linkage", "#ifdef __cplusplus\nextern \"C\" {\n#endif\nint f();\n", false},
    {"guarded code", "#if defined(__cplusplus)\nclass A {};\n#else\nstruct A;\n#endif\n", false},
    {"code after the guard", "#ifdef __cplusplus\nclass A {};\n#endif\nclass B {};\n", true},
    {"the other branch", "#ifndef __cplusplus\nstruct A;\n#else\nclass A {};\n#endif\n", false},
    {"C in the other branch", "#ifndef __cplusplus\nint a;\n#else\nint b;\n#endif\n", false},
    {"a nested condition", "#ifdef __cplusplus\n#if A\nclass B {};\n#endif\nclass C {};\n#endif\n", false},
    {"another condition", "#ifdef A\nclass B {};\n#endif\n", true},
    {"comments and strings", "/* class A {}; std::string */ char *s = \"a::b\";", false},
    {"two colons with a blank", "a ? b : :c", false},
    {"ends without a beginning", "#endif\n#else\nclass A {};", true},
};

TEST(IsCplusplus, Cases)
{
    for (const DialectCase& each : kDialects)
        EXPECT_EQ(IsCplusplus(each.text), each.isCplusplus) << each.why;
}

} // namespace
} // namespace tagging
