#include "wren/desktop/symbols/ScopePath.h"

#include <algorithm>

namespace wren {

std::vector<size_t> ScopesAt(const std::vector<PaletteItem>& symbols, long line)
{
    std::vector<size_t> scopes;
    for (size_t at = 0; at < symbols.size(); ++at) {
        const PaletteItem& symbol = symbols[at];
        const auto depth = static_cast<size_t>(std::max(symbol.depth, 0));
        if (depth == scopes.size() && symbol.line <= line && std::max(symbol.line, symbol.endLine) >= line)
            scopes.push_back(at);
        else if (symbol.line > line && depth <= scopes.size())
            break; // the next scope of this depth, or one further out
    }
    return scopes;
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
