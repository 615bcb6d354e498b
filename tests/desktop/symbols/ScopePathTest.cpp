#include "wren/desktop/symbols/ScopePath.h"

#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

wren::PaletteItem Item(const char* name, long line, long endLine, int depth)
{
    wren::PaletteItem item;
    item.name = name;
    item.line = line;
    item.endLine = endLine;
    item.depth = depth;
    return item;
}

// A namespace with two classes, and a function behind it.
std::vector<wren::PaletteItem> Symbols()
{
    return {Item("LIMIT", 1, 0, 0),   Item("draw", 2, 20, 0), Item("Shape", 3, 8, 1),    Item("Paint", 4, 0, 2),
            Item("Area", 5, 7, 2),    Item("Pen", 10, 18, 1), Item("Colour", 11, 13, 2), Item("Red", 12, 0, 3),
            Item("width", 14, 14, 2), Item("main", 22, 30, 0)};
}

Names NamesOf(const std::vector<wren::PaletteItem>& symbols, const std::vector<size_t>& numbers)
{
    Names names;
    for (const size_t number : numbers)
        names.push_back(symbols[number].name);
    return names;
}

} // namespace

TEST(ScopesAt, Cases)
{
    const struct {
        const char* why;
        long line;
        Names scopes;
    } kCases[] = {
        {"a line of its own", 1, {"LIMIT"}},
        {"the first line of a namespace", 2, {"draw"}},
        {"a member without a body", 4, {"draw", "Shape", "Paint"}},
        {"within a body", 6, {"draw", "Shape", "Area"}},
        {"behind the last member", 8, {"draw", "Shape"}},
        {"between two classes", 9, {"draw"}},
        {"four deep", 12, {"draw", "Pen", "Colour", "Red"}},
        {"between two functions", 21, {}},
        {"the last function", 30, {"main"}},
        {"behind all", 31, {}},
        {"before all", 0, {}},
    };
    const std::vector<wren::PaletteItem> symbols = Symbols();
    for (const auto& each : kCases)
        EXPECT_EQ(NamesOf(symbols, wren::ScopesAt(symbols, each.line)), each.scopes) << each.why;
    EXPECT_EQ(wren::ScopesAt({}, 1).size(), 0u);
}

TEST(ScopesAt, AMethodDefinedOutsideOfItsClassStandsInTheNamespaceAroundIt)
{
    std::vector<wren::PaletteItem> symbols = {Item("wren", 1, 40, 0),         Item("inner", 2, 10, 1),
                                              Item("Helper", 4, 8, 2),        Item("Late", 30, 34, 1),
                                              Item("Shape::Area", 12, 20, 0), Item("Shape::Draw", 22, 28, 0)};
    symbols[0].kind = symbols[1].kind = tagging::SymbolKind::Namespace;
    EXPECT_EQ(NamesOf(symbols, wren::ScopesAt(symbols, 20)), (Names{"wren", "Shape::Area"}));
    EXPECT_EQ(NamesOf(symbols, wren::ScopesAt(symbols, 22)), (Names{"wren", "Shape::Draw"}));
    EXPECT_EQ(NamesOf(symbols, wren::ScopesAt(symbols, 5)), (Names{"wren", "inner", "Helper"}));
    EXPECT_EQ(NamesOf(symbols, wren::ScopesAt(symbols, 31)), (Names{"wren", "Late"}));
    EXPECT_EQ(NamesOf(symbols, wren::ScopesAt(symbols, 21)), (Names{"wren"}));
}

TEST(NameIn, IsAsTheScopeAroundNeedsIt)
{
    const struct {
        const char* why;
        const char* outerScope; // null: no scope is around
        const char* outer;
        const char* scope;
        const char* name;
    } kCases[] = {
        {"a function of a file", nullptr, "", "", "Area"},
        {"a method defined outside of its class", nullptr, "", "Shape", "Shape::Area"},
        {"the same in a namespace", "", "wren", "wren::Shape", "Shape::Area"},
        {"in a namespace within another", "wren", "lsp", "wren::lsp::Shape", "Shape::Area"},
        {"in its class", "wren", "Shape", "wren::Shape", "Area"},
        {"in a namespace", "", "wren", "wren", "Area"},
        {"of another scope than the one around", "", "wren", "std", "Area"},
        {"of a scope that only begins like it", "", "wren", "wrenlike::Shape", "Area"},
    };
    for (const auto& each : kCases) {
        wren::PaletteItem symbol = Item("Area", 2, 3, 0);
        symbol.detail = each.scope;
        wren::PaletteItem outer = Item(each.outer, 1, 9, 0);
        outer.detail = each.outerScope == nullptr ? "" : each.outerScope;
        EXPECT_EQ(wren::NameIn(each.outerScope == nullptr ? nullptr : &outer, symbol), each.name) << each.why;
    }
}

TEST(SiblingsOf, AreWhatHasTheSameParent)
{
    const std::vector<wren::PaletteItem> symbols = Symbols();
    EXPECT_EQ(NamesOf(symbols, wren::SiblingsOf(symbols, 0)), (Names{"LIMIT", "draw", "main"}));
    EXPECT_EQ(NamesOf(symbols, wren::SiblingsOf(symbols, 5)), (Names{"Shape", "Pen"}));
    EXPECT_EQ(NamesOf(symbols, wren::SiblingsOf(symbols, 4)), (Names{"Paint", "Area"}));
    EXPECT_EQ(NamesOf(symbols, wren::SiblingsOf(symbols, 8)), (Names{"Colour", "width"}));
}

TEST(ContentsOf, AreOneLevelDeeper)
{
    const std::vector<wren::PaletteItem> symbols = Symbols();
    EXPECT_EQ(NamesOf(symbols, wren::ContentsOf(symbols, std::nullopt)), (Names{"LIMIT", "draw", "main"}));
    EXPECT_EQ(NamesOf(symbols, wren::ContentsOf(symbols, 5)), (Names{"Colour", "width"}));
    EXPECT_EQ(NamesOf(symbols, wren::ContentsOf(symbols, 9)), Names());
}
