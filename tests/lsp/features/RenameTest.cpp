// Other names for locals and parameters.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

TEST(Rename, ChangesALocalInItsScope)
{
    const FeatureFixture fixture("int f(int n);\nint f(int «n») {\n  { int n = 2; g(n); }\n  return «n|»;\n}\n");
    const Json edit = fixture.Ask("textDocument/rename", {{"newName", "count"}});
    const Json& edits = edit["changes"][fixture.UriOf("a.cpp")];
    EXPECT_EQ(fixture.Places(edits), fixture.Marks());
    EXPECT_EQ(edits[0]["newText"], "count");
}

TEST(Rename, NamesTheVersionWhereTheClientCan)
{
    FeatureOptions options;
    options.capabilities = {{"workspace", {{"workspaceEdit", {{"documentChanges", true}}}}}};
    const FeatureFixture fixture("void f() { int n|; }\n", options);
    const Json edit = fixture.Ask("textDocument/rename", {{"newName", "count"}});
    EXPECT_EQ(edit["documentChanges"][0]["textDocument"], Json({{"uri", fixture.UriOf("a.cpp")}, {"version", 0}}));
    EXPECT_EQ(edit["documentChanges"][0]["edits"].size(), 1U);
}

TEST(Rename, IsRefusedWithASentence)
{
    const struct {
        const char* why;
        const char* text;
        const char* newName;
        const char* sentence;
    } cases[] = {
        {"a function", "void f|() {}\n", "g",
         "-32803 Only local variables, parameters and labels can be renamed; \"f\" may be used where the index cannot "
         "tell."},
        {"no name", "void f() { int n|; }\n", "1n", "-32803 \"1n\" is not a name."},
        {"a keyword", "void f() { int n|; }\n", "while", "-32803 \"while\" is a keyword."},
        {"another local", "void f() { int m; int n; g(n|); }\n", "m", "-32803 \"m\" is visible there already."},
        {"a local of an inner block", "void f() { int n|; { int m; g(m, n); } }\n", "m",
         "-32803 \"m\" is visible there already."},
        {"a global", "int m;\nvoid f() { int n; g(n|); }\n", "m", "-32803 \"m\" is visible there already."},
        {"a member", "struct A { int m; void f() { int n; g(n|); } };\n", "m",
         "-32803 \"m\" is visible there already."},
    };
    for (const auto& c : cases) {
        const FeatureFixture fixture(c.text);
        EXPECT_EQ(fixture.Refusal("textDocument/rename", {{"newName", c.newName}}), c.sentence) << c.why;
    }
}

TEST(Rename, IsPreparedByTheNameAndItsRange)
{
    const FeatureFixture fixture("void f() { int «n|»; }\n");
    const Json prepared = fixture.Ask("textDocument/prepareRename");
    EXPECT_EQ(fixture.Places(prepared), fixture.Marks());
    EXPECT_EQ(prepared["placeholder"], "n");
    EXPECT_EQ(FeatureFixture("// no|ne\n").Ask("textDocument/prepareRename"), Json());
    EXPECT_TRUE(FeatureFixture("int n|;\n").Refusal("textDocument/prepareRename").starts_with("-32803 Only local"));
}

} // namespace
