#include "wren/symbols/Outline.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace wren {

namespace {

using tagging::Symbol;

constexpr size_t kTop = static_cast<size_t>(-1);
constexpr unsigned kDeepest = 200; // beyond this, symbols of a source that was made to harm stand at the top

std::string QualifiedNameOf(const Symbol& symbol)
{
    return symbol.scope.empty() ? std::string(symbol.name)
                                : std::string(symbol.scope) + "::" + std::string(symbol.name);
}

// The scope that the members of a container name: for a category, its class.
std::string ScopeInside(const Symbol& symbol, bool isObjectiveC)
{
    return isObjectiveC && !symbol.scope.empty() ? std::string(symbol.scope) : QualifiedNameOf(symbol);
}

// Objective-C's containers do not nest: each lasts until the next one. Their ends are not known.
bool IsObjectiveCContainer(tagging::SymbolKind kind)
{
    using Kind = tagging::SymbolKind;
    return kind == Kind::Interface || kind == Kind::Implementation || kind == Kind::Protocol || kind == Kind::Category;
}

// The parents of symbols that come in the order of the source.
class Parents {
public:
    explicit Parents(const std::vector<Symbol>& symbols) : symbols(symbols) {}

    // Of the symbol with this number; all before it have been asked for.
    size_t Of(size_t number)
    {
        const Symbol& symbol = symbols[number];
        size_t parent = kTop;
        const auto named = byName.find(std::string(symbol.scope));
        if (named != byName.end() && !IsObjectiveCContainer(symbol.kind) && Spans(named->second, symbol.line))
            parent = named->second;
        if (parent != kTop && depths[parent] == kDeepest)
            parent = kTop;
        depths.push_back(parent == kTop ? 0 : depths[parent] + 1);
        if (IsObjectiveCContainer(symbol.kind))
            container = number;
        if (symbol.endLine != 0 || container == number)
            byName.insert_or_assign(ScopeInside(symbol, container == number), number);
        return parent;
    }

private:
    bool Spans(size_t outer, unsigned line) const
    {
        return outer == container || (symbols[outer].line <= line && line <= symbols[outer].endLine);
    }

    const std::vector<Symbol>& symbols;
    std::unordered_map<std::string, size_t> byName; // the last one with a body
    size_t container = kTop;                        // the last one of Objective-C
    std::vector<unsigned> depths;                   // by number
};

std::vector<OutlineNode> NodesIn(size_t parent, const std::vector<Symbol>& symbols,
                                 const std::unordered_map<size_t, std::vector<size_t>>& children)
{
    std::vector<OutlineNode> nodes;
    if (const auto inside = children.find(parent); inside != children.end())
        for (const size_t child : inside->second)
            nodes.push_back({&symbols[child], NodesIn(child, symbols, children)});
    return nodes;
}

} // namespace

std::vector<OutlineNode> OutlineOf(const std::vector<Symbol>& symbols)
{
    std::unordered_map<size_t, std::vector<size_t>> children;
    Parents parents(symbols);
    for (size_t number = 0; number < symbols.size(); ++number)
        children[parents.Of(number)].push_back(number);
    return NodesIn(kTop, symbols, children);
}

} // namespace wren
