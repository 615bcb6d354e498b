// What a name is, for a reader.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

std::string PlainHover(const std::string& text)
{
    const FeatureFixture fixture(text);
    const Json hover = fixture.Ask("textDocument/hover");
    return hover.is_null() ? "null" : hover["contents"]["value"].get<std::string>();
}

TEST(Hover, ShowsTheDeclarationAsWrittenItsCommentAndItsPlace)
{
    const struct {
        const char* why;
        const char* text;
        const char* shown;
    } cases[] = {
        {"a function", "// Its area.\nint area(int n)\n{\n  return n;\n}\nint x = ar|ea(1);\n",
         "int area(int n)\n\nIts area.\n\na.cpp:2"},
        {"a block comment", "int x;\n/**\n * First.\n * Second.\n */\nint area();\nint y = ar|ea();\n",
         "int area()\n\nFirst.\nSecond.\n\na.cpp:6"},
        {"a comment behind it", "int width; ///< In metres.\nint x = wid|th;\n", "int width\n\nIn metres.\n\na.cpp:1"},
        {"an empty line between", "// Licence.\n\nint area();\nint y = ar|ea();\n", "int area()\n\na.cpp:3"},
        {"a member", "struct Shape { int width; };\nint f(Shape s) { return s.wid|th; }\n",
         "// in Shape\nint width\n\na.cpp:1"},
        {"a class", "struct Base {};\nstruct Shape : Base {\n  int n;\n};\nSha|pe s;\n",
         "struct Shape : Base\n\na.cpp:2"},
        {"a local", "void f() {\n  const char* name = \"a\";\n  g(na|me);\n}\n", "const char* name = \"a\"\n\na.cpp:2"},
        {"a parameter", "int f(int a, const int* b) { return *b|; }\n", "const int* b\n\na.cpp:1"},
        {"the comment of the declaration", "// Its area.\nint area();\nint area() { return 1; }\nint x = ar|ea();\n",
         "int area()\n\nIts area.\n\na.cpp:2"},
        {"a name without a declaration", "int x = un|known;\n", "null"},
        {"a comment", "int x; // x|\n", "null"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PlainHover(c.text), c.shown) << c.why;
}

TEST(Hover, ShowsPlainValues)
{
    EXPECT_EQ(PlainHover("#define BITS (1 << 4)\nint x = BI|TS;\n"), "#define BITS (1 << 4)\n// = 16\n\na.cpp:1");
    EXPECT_EQ(PlainHover("#define SIZE sizeof(int)\nint x = SI|ZE;\n"), "#define SIZE sizeof(int)\n\na.cpp:1");
    EXPECT_EQ(PlainHover("enum E { A, B = 0x10, C };\nint x = C|;\n"), "// in E\nC\n// = 17\n\na.cpp:1");
    EXPECT_EQ(PlainHover("enum E { A = 1 << 2 };\nint x = A|;\n"), "// in E\nA = 1 << 2\n// = 4\n\na.cpp:1");
    EXPECT_EQ(PlainHover("enum E { A = 12 };\nint x = A|;\n"), "// in E\nA = 12\n\na.cpp:1") << "read there";
    EXPECT_EQ(PlainHover("#define SIZE 42\nint x = SI|ZE;\n"), "#define SIZE 42\n\na.cpp:1") << "read there";
    EXPECT_EQ(PlainHover("enum E { A = F(1), B };\nint x = B|;\n"), "// in E\nB\n\na.cpp:1");
}

TEST(Hover, SaysWhenItIsOneOfSeveral)
{
    EXPECT_EQ(PlainHover("struct A { int size; };\nstruct B { int size; };\nint f() { return unknown().si|ze; }\n"),
              "// in A\nint size\n\na.cpp:1\n\nand 1 more\n\nfound by its name");
}

TEST(Hover, IsMarkdownWhereTheClientLikesIt)
{
    FeatureOptions options;
    options.capabilities = {{"textDocument", {{"hover", {{"contentFormat", {"markdown", "plaintext"}}}}}}};
    const FeatureFixture fixture("// Less than <n>.\nint area(int n);\nint x = «ar|ea»(1);\n", options);
    const Json hover = fixture.Ask("textDocument/hover");
    EXPECT_EQ(hover["contents"]["kind"], "markdown");
    EXPECT_EQ(hover["contents"]["value"], "```cpp\nint area(int n)\n```\n\nLess than \\<n>.\n\n`a.cpp:2`");
    EXPECT_EQ(fixture.Places(hover), fixture.Marks());
}

TEST(Hover, OfAnIncludeIsThePath)
{
    EXPECT_EQ(PlainHover("== lib/a.h\nint n;\n== b.cpp\n#include \"a|.h\"\n"), "lib/a.h");
}

} // namespace
