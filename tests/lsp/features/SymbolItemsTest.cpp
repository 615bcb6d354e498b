#include "wren/lsp/features/SymbolItems.h"

#include <gtest/gtest.h>

namespace {

using tagging::Symbol;
using tagging::SymbolKind;

Symbol Made(SymbolKind kind, std::string_view name, std::string_view scope = "",
            SymbolKind scopeKind = SymbolKind::None)
{
    Symbol symbol;
    symbol.kind = kind;
    symbol.name = name;
    symbol.scope = scope;
    symbol.scopeKind = scopeKind;
    return symbol;
}

} // namespace

TEST(ItemName, IsNeverEmpty)
{
    const struct {
        const char* why;
        Symbol symbol;
        const char* name;
    } kCases[] = {
        {"a function", Made(SymbolKind::Function, "f"), "f"},
        {"a selector", Made(SymbolKind::InstanceMethod, "moveTo:y:", "Shape"), "moveTo:y:"},
        {"an unnamed structure", Made(SymbolKind::Struct, "__anon0123456789ab"), "(anonymous struct)"},
        {"an unnamed enumeration", Made(SymbolKind::Enum, "__anon0123456789ab"), "(anonymous enum)"},
        {"no name at all", Made(SymbolKind::Union, ""), "(anonymous union)"},
        {"a category", Made(SymbolKind::Category, "Sorting", "Shelf", SymbolKind::Class), "Shelf (Sorting)"},
        {"the implementation of a class", Made(SymbolKind::Implementation, "Shelf"), "Shelf"},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::lsp::ItemName(each.symbol), each.name) << each.why;
}

// The numbers are the protocol's.
TEST(SymbolKindOf, Cases)
{
    Symbol macroWithParameters = Made(SymbolKind::Macro, "M");
    macroWithParameters.signature = "(a)";
    const struct {
        const char* why;
        Symbol symbol;
        int kind;
    } kCases[] = {
        {"a function", Made(SymbolKind::Function, "f", "n", SymbolKind::Namespace), 12},
        {"a method", Made(SymbolKind::Prototype, "f", "S", SymbolKind::Struct), 6},
        {"a constructor", Made(SymbolKind::Prototype, "S", "n::S", SymbolKind::Class), 9},
        {"a method with the end of its class's name", Made(SymbolKind::Prototype, "S", "n::MyS", SymbolKind::Class), 6},
        {"a constant macro", Made(SymbolKind::Macro, "M"), 14},
        {"a macro that is called", macroWithParameters, 12},
        {"a protocol", Made(SymbolKind::Protocol, "P"), 11},
        {"a member", Made(SymbolKind::Member, "m", "S", SymbolKind::Struct), 8},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::lsp::SymbolKindOf(each.symbol), each.kind) << each.why;
}
