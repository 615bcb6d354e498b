#include "wren/lsp/features/SelectionRanges.h"

#include "tests/lsp/features/FeatureFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

// The texts around the caret '|', from inside out.
std::vector<std::string> Around(std::string text)
{
    const size_t caret = text.find('|');
    text.erase(caret, 1);
    std::vector<std::string> texts;
    for (const auto& [start, end] : wren::lsp::SelectionsAround(text, caret))
        texts.push_back(text.substr(start, end - start));
    return texts;
}

} // namespace

TEST(SelectionsAround, Cases)
{
    const struct {
        const char* why;
        const char* text;
        std::vector<std::string> around;
    } kCases[] = {
        {"a word in a call",
         "int f() { g(a, b|c + 1); }",
         {"bc", "bc + 1", "a, bc + 1", "(a, bc + 1)", "g(a, bc + 1);", " g(a, bc + 1); ", "{ g(a, bc + 1); }",
          "int f() { g(a, bc + 1); }"}},
        {"behind a word", "x = ab|;", {"ab", "x = ab;"}},
        {"before a bracket", "f|(1);", {"f", "f(1);"}},
        {"in empty brackets", "f(|);", {"()", "f();"}},
        {"the second of two statements", "{ a(); b|(); }", {"b", "b();", " a(); b(); ", "{ a(); b(); }"}},
        {"an else belongs to its if",
         "{ if (a) { b; } else { c|; } d; }",
         {"c", "c;", " c; ", "{ c; }", "if (a) { b; } else { c; }", " if (a) { b; } else { c; } d; ",
          "{ if (a) { b; } else { c; } d; }"}},
        {"an unclosed bracket", "f(a, b|", {"b", "f(a, b"}},
    };
    for (const auto& each : kCases)
        EXPECT_THAT(Around(each.text), ElementsAreArray(each.around)) << each.why;
}

TEST(SelectionsAround, NothingInAnEmptyText)
{
    EXPECT_THAT(wren::lsp::SelectionsAround("", 0), IsEmpty());
}

TEST(SelectionsAround, EachContainsTheOneBefore)
{
    const std::string text =
        "template <class T> struct S : B<T> { int f(int a[3]) { return [=] { return a[1, 2]; }(); } };\n"
        "@implementation A\n- (void)m:(int)x { [self n:x with:{1, 2}]; }\n@end ) ] }";
    for (size_t offset = 0; offset <= text.size(); ++offset) {
        std::pair<size_t, size_t> inner{offset, offset};
        for (const auto& outer : wren::lsp::SelectionsAround(text, offset)) {
            EXPECT_LE(outer.first, inner.first) << offset;
            EXPECT_GE(outer.second, inner.second) << offset;
            inner = outer;
        }
        EXPECT_EQ(inner, (std::pair<size_t, size_t>(0, text.size()))) << offset;
    }
}

TEST(SelectionRanges, EndWithTheTextWhenTheyAreNestedDeeply)
{
    const std::string braces(10'000, '{');
    const lsp_test::FeatureFixture fixture("void f() " + braces + "|" + std::string(10'000, '}') + "\n");
    const lsp_test::Json answer =
        fixture.Ask("textDocument/selectionRange", {{"positions", lsp_test::Json::array({fixture.caret})}});
    ASSERT_EQ(answer.size(), 1U);
    const lsp_test::Json* outermost = &answer[0];
    size_t depth = 1;
    for (; outermost->contains("parent"); outermost = &outermost->at("parent"))
        ++depth;
    EXPECT_EQ(depth, 200U);
    EXPECT_EQ(outermost->at("range").at("end"), (lsp_test::Json{{"line", 1}, {"character", 0}}));
}
