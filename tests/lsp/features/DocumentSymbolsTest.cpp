// The symbols of one text.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

// "n(S(f a) S::g)": the names, with the children in parentheses.
std::string TreeOf(const Json& items)
{
    std::string names;
    for (const Json& item : items) {
        names += (names.empty() ? "" : " ") + item["name"].get<std::string>();
        if (item.contains("children"))
            names += "(" + TreeOf(item["children"]) + ")";
    }
    return names;
}

Json SymbolsOf(const std::string& text, bool asTree = true)
{
    FeatureOptions options;
    options.isIndexed = false;
    options.capabilities["textDocument"]["documentSymbol"]["hierarchicalDocumentSymbolSupport"] = asTree;
    return FeatureFixture(text, options).Ask("textDocument/documentSymbol");
}

void ExpectContained(const Json& items, const std::string& why)
{
    using wren::lsp::Range;
    for (const Json& item : items) {
        const Range outer = item["range"].get<Range>();
        const Range name = item["selectionRange"].get<Range>();
        EXPECT_LE(outer.start, name.start) << why;
        EXPECT_GE(outer.end, name.end) << why;
        ExpectContained(item.value("children", Json::array()), why);
    }
}

} // namespace

TEST(DocumentSymbols, AreATree)
{
    const struct {
        const char* why;
        const char* text;
        const char* names;
    } kCases[] = {
        {"members stand in their class", "== a.cpp\n|namespace n {\nstruct S {\n  void f();\n  int a;\n};\n}\n",
         "n(S(f a))"},
        {"a member that is defined outside", "== a.cpp\n|struct S {\n  int g();\n};\nint S::g() { return 1; }\n",
         "S(g) S::g"},
        {"what has no name", "== a.c\n|typedef struct {\n  int x;\n} T;\n", "(anonymous struct)(x) T"},
        {"a category of Objective-C", "== a.m\n|@interface Shelf (Sorting)\n- (void)sort:(int)a by:(int)b;\n@end\n",
         "Shelf (Sorting)(sort:by:)"},
        {"prototypes and macros, but no locals",
         "== a.c\n|#define M 1\nint p(int a);\nint f(int b)\n{\n  int local;\nout:\n  return b;\n}\n", "M p f"},
        {"an empty text", "== a.c\n|", ""},
    };
    for (const auto& each : kCases) {
        const Json symbols = SymbolsOf(each.text);
        EXPECT_EQ(TreeOf(symbols), each.names) << each.why;
        ExpectContained(symbols, each.why);
    }
}

TEST(DocumentSymbols, AreAListForAClientThatCannotShowATree)
{
    const Json symbols = SymbolsOf("== a.cpp\n|struct S {\n  void f();\n};\n", false);
    EXPECT_EQ(TreeOf(symbols), "S f");
    EXPECT_EQ(symbols[1]["containerName"], "S");
    EXPECT_EQ(symbols[1]["location"]["range"]["start"]["line"], 1);
}

TEST(DocumentSymbols, AreEmptyForOtherLanguages)
{
    FeatureFixture fixture("== a.c\n|int a;\n");
    fixture.Open("a.c", "int a;\n", "python");
    EXPECT_EQ(fixture.Ask("textDocument/documentSymbol"), Json::array());
}
