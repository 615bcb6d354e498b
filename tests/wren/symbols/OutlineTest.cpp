#include "wren/symbols/Outline.h"

#include <gtest/gtest.h>

namespace {

using tagging::Symbol;

Symbol At(unsigned line, unsigned end, std::string_view name, std::string_view scope = "")
{
    Symbol symbol;
    symbol.line = line;
    symbol.endLine = end;
    symbol.name = name;
    symbol.scope = scope;
    return symbol;
}

// "Outer(Inner(a) b) c"
std::string Shown(const std::vector<wren::OutlineNode>& nodes)
{
    std::string text;
    for (const wren::OutlineNode& node : nodes) {
        text += (text.empty() ? "" : " ") + std::string(node.symbol->name);
        if (!node.children.empty())
            text += "(" + Shown(node.children) + ")";
    }
    return text;
}

std::string OutlineOf(const std::vector<Symbol>& symbols)
{
    return Shown(wren::OutlineOf(symbols));
}

} // namespace

TEST(Outline, MembersStandInTheirClass)
{
    EXPECT_EQ(OutlineOf({At(1, 9, "Outer"), At(2, 5, "Inner", "Outer"), At(3, 0, "a", "Outer::Inner"),
                         At(6, 0, "b", "Outer"), At(10, 12, "c")}),
              "Outer(Inner(a) b) c");
}

TEST(Outline, MembersDefinedOutsideOfTheirClassStandAtTheTop)
{
    EXPECT_EQ(OutlineOf({At(1, 3, "Shape"), At(2, 0, "Area", "Shape"), At(5, 8, "Area", "Shape")}), "Shape(Area) Area");
}

TEST(Outline, ANamespaceThatIsOpenedTwiceIsTwoNodes)
{
    EXPECT_EQ(OutlineOf({At(1, 3, "n"), At(2, 0, "a", "n"), At(5, 7, "n"), At(6, 0, "b", "n")}), "n(a) n(b)");
}

TEST(Outline, ClassesOfObjectiveCLastUntilTheNextOne)
{
    std::vector<Symbol> symbols = {At(1, 0, "Shelf"), At(2, 0, "put:", "Shelf"), At(4, 0, "Book"),
                                   At(5, 0, "title", "Book"), At(8, 0, "late", "Shelf")};
    symbols[0].kind = symbols[2].kind = tagging::SymbolKind::Interface;
    EXPECT_EQ(OutlineOf(symbols), "Shelf(put:) Book(title) late");
}

TEST(Outline, MethodsOfACategoryStandInIt)
{
    std::vector<Symbol> symbols = {At(1, 0, "Shelf"), At(2, 0, "put:", "Shelf"), At(4, 6, "Sorting", "Shelf"),
                                   At(5, 0, "sort", "Shelf")};
    symbols[0].kind = tagging::SymbolKind::Interface;
    symbols[2].kind = tagging::SymbolKind::Category;
    EXPECT_EQ(OutlineOf(symbols), "Shelf(put:) Sorting(sort)");
}

TEST(Outline, AScopeThatIsNotInTheFileLeavesItsMembersAtTheTop)
{
    EXPECT_EQ(OutlineOf({At(1, 4, "Area", "Shape"), At(6, 9, "Width", "Shape")}), "Area Width");
}

TEST(Outline, EndsForScopesOfAnyDepth)
{
    std::vector<std::string> scopes;
    std::string scope;
    for (int depth = 0; depth < 1000; ++depth)
        scopes.push_back(scope += depth == 0 ? "a" : "::a");
    std::vector<Symbol> symbols = {At(1, 1, "a")};
    for (const std::string& each : scopes)
        symbols.push_back(At(1, 1, "a", each));
    EXPECT_GT(wren::OutlineOf(symbols).size(), 1u);
}

TEST(Outline, IsEmptyWithoutSymbols)
{
    EXPECT_EQ(OutlineOf({}), "");
}
