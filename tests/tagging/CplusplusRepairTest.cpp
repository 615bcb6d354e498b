#include "tagging/CplusplusRepair.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tagging {
namespace {

struct RepairCase {
    const char* why;
    const char* text;
    const char* repaired; // blanks shortened to one; "" for a text that stays
};

const RepairCase kRepairs[] = {
    {"an overriding destructor", "struct A { ~A() override; };", "struct A { ~A() ; };"},
    {"one with a body", "struct A { ~A() noexcept override { f(); } };", "struct A { ~A() { f(); } };"},
    {"one that is defaulted", "struct A { ~A() override = default; };", "struct A { ~A() = default; };"},
    {"one with a macro", "class A { ~A() UNLOCK(mutex) { } };", "class A { ~A() { } };"},
    {"a plain destructor stays", "struct A { ~A() noexcept; };", ""},
    {"an operator stays", "int a = ~f() & b;", ""},
    {"a complement in a function stays", "void f() { a = ~b() ; }", ""},
    {"a typed initial value of a member", "struct A { B b = B{1, {2}}; int c; };", "struct A { B b ; int c; };"},
    {"of a qualified type", "namespace n { int a = std::pair<int, int>{1, 2}.first; }",
     "namespace n { int a .first; }"},
    {"of a global variable", "Value v = Value{};", "Value v ;"},
    {"an initial value in braces stays", "int a = {1}; int b{2};", ""},
    {"a typed one in a function stays", "void f() { Value v = Value{1}; }", ""},
    {"a default argument stays", "void f(Value v = Value{1});", ""},
    {"an alias stays", "using A = struct B { int c; };", ""},
    {"a concept stays", "template <class T> concept C = requires { T(); };", ""},
    {"an enumerator stays", "enum E { kA = kB };", ""},
    {"a template with a parameter for its result", "template <class T, class U> T f(U u);", " T f(U u);"},
    {"with default arguments", "template <typename T, typename = A<!B<T>::value>> T f();", " T f();"},
    {"with comparisons in parentheses", "template <class T, int N = (1 > 0)> T f();", " T f();"},
    {"the last parameter does no harm", "template <class T, class U> U f(T t);", ""},
    {"nor does a word before it", "template <class T, class U> inline T f(U u);", ""},
    {"nor does the only parameter", "template <class T> T f(T t);", ""},
    {"a class with such parameters stays", "template <class T, class U> class A;", ""},
    {"an enumeration with a macro", "enum class E UNDERLYING(char) { kOne };", "enum class E { kOne };"},
    {"a function that returns one stays", "enum E f(int) { }", ""},
    {"the branches of a condition begin alike",
     "#if A\nvoid f() {\n#else\nvoid g() {\n#endif\n}\nstruct B { ~B() override; };",
     "#if A\nvoid f() {\n#else\nvoid g() {\n#endif\n}\nstruct B { ~B() ; };"},
    {"code that is put away stays", "#if 0\nstruct A { ~A() override; };\n#endif\n", ""},
    {"comments and strings stay", "// ~A() override;\nchar s[] = \"template <class T, class U> T f();\";", ""},
    {"a text that ends early", "template <class T, class U", ""},
    {"another one", "struct A { B b = B{1,", ""},
};

std::string WithSingleBlanks(std::string text)
{
    const auto end = std::unique(text.begin(), text.end(), [](char a, char b) { return a == ' ' && b == ' '; });
    text.erase(end, text.end());
    return text;
}

TEST(CplusplusRepair, Cases)
{
    for (const RepairCase& each : kRepairs) {
        const std::optional<RepairedText> repaired = RepairCplusplus(each.text);
        EXPECT_EQ(repaired ? WithSingleBlanks(repaired->text) : "", each.repaired) << each.why;
        EXPECT_EQ(repaired ? repaired->text.size() : 0, repaired ? std::string(each.text).size() : 0) << each.why;
    }
}

TEST(CplusplusRepair, RemembersTheTemplates)
{
    const std::optional<RepairedText> repaired = RepairCplusplus("\ntemplate <class T, int N = 3>\nT f();");
    ASSERT_TRUE(repaired);
    ASSERT_EQ(repaired->templates.size(), 1u);
    EXPECT_EQ(repaired->templates[0].line, 2u);
    EXPECT_EQ(repaired->templates[0].parameters, "<class T,int N=3>");
}

} // namespace
} // namespace tagging
