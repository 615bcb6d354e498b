#include "wren/desktop/symbols/ScopePath.h"

#include <algorithm>

namespace wren {

namespace {

bool Contains(const PaletteItem& symbol, long line)
{
    return symbol.line <= line && line <= std::max(symbol.line, symbol.endLine);
}

// A definition outside of its class, "Shape::Area", is at the top of the tree, but stands in a namespace.
bool StandsIn(const PaletteItem& outer, const PaletteItem& symbol)
{
    return Contains(outer, symbol.line) && (symbol.depth > outer.depth || outer.kind == tagging::SymbolKind::Namespace);
}

} // namespace

std::vector<size_t> ScopesAt(const std::vector<PaletteItem>& symbols, long line)
{
    std::vector<size_t> scopes;
    for (size_t at = 0; at < symbols.size(); ++at)
        if (Contains(symbols[at], line) && (scopes.empty() || StandsIn(symbols[scopes.back()], symbols[at])))
            scopes.push_back(at);
    return scopes;
}

std::string NameIn(const PaletteItem* outer, const PaletteItem& symbol)
{
    if (symbol.detail.empty())
        return symbol.name;
    if (outer == nullptr)
        return symbol.detail + "::" + symbol.name;
    const std::string around = (outer->detail.empty() ? "" : outer->detail + "::") + outer->name + "::";
    return symbol.detail.starts_with(around) ? symbol.detail.substr(around.size()) + "::" + symbol.name : symbol.name;
}

std::vector<size_t> ContentsOf(const std::vector<PaletteItem>& symbols, std::optional<size_t> of)
{
    std::vector<size_t> contents;
    const int depth = of ? symbols[*of].depth + 1 : 0;
    for (size_t at = of ? *of + 1 : 0; at < symbols.size() && symbols[at].depth >= depth; ++at)
        if (symbols[at].depth == depth)
            contents.push_back(at);
    return contents;
}

std::vector<size_t> SiblingsOf(const std::vector<PaletteItem>& symbols, size_t of)
{
    for (size_t at = of; at-- > 0;)
        if (symbols[at].depth < symbols[of].depth)
            return ContentsOf(symbols, at);
    return ContentsOf(symbols, std::nullopt);
}

} // namespace wren
