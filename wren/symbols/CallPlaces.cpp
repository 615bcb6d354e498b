#include "wren/symbols/CallPlaces.h"

#include "base/Identifier.h"
#include "wren/symbols/NamedSymbols.h"

namespace wren {

std::vector<size_t> CallPlaces(std::string_view text, size_t start, size_t end, size_t limit)
{
    std::vector<size_t> places;
    for (size_t at = start; at < end && places.size() < limit;) {
        if (!base::IsIdentifierCharacter(text[at])) {
            ++at;
            continue;
        }
        size_t behind = at;
        while (behind < end && base::IsIdentifierCharacter(text[behind]))
            ++behind;
        const size_t next = text.find_first_not_of(" \t\r\n", behind);
        if (base::IsIdentifierStart(text[at]) && next < end &&
            std::string_view("(:]").find(text[next]) != std::string_view::npos)
            places.push_back(at);
        at = behind;
    }
    return places;
}

std::optional<symbols::Symbol> FunctionAround(const symbols::Symbols& symbols, unsigned line)
{
    std::optional<symbols::Symbol> innermost;
    for (const symbols::Symbol& symbol : symbols.found)
        if (IsCallable(symbol.kind) && symbol.line <= line && line <= symbol.endLine)
            if (!innermost || symbol.line >= innermost->line)
                innermost = symbol;
    return innermost;
}

std::optional<symbols::Symbol> CallerAround(const symbols::Symbols& symbols, unsigned line)
{
    if (std::optional<symbols::Symbol> function = FunctionAround(symbols, line))
        return function;
    // Indexes know where a variable begins, but not where its initialiser ends: nothing else may begin between.
    const symbols::Symbol* last = nullptr;
    for (const symbols::Symbol& symbol : symbols.found)
        if (symbol.line <= line && (last == nullptr || symbol.line >= last->line))
            last = &symbol;
    using Kind = symbols::SymbolKind;
    if (last != nullptr && (last->kind == Kind::Variable || last->kind == Kind::Member))
        return *last;
    if (last != nullptr && last->line == line && last->kind == Kind::Macro)
        return *last;
    return std::nullopt;
}

} // namespace wren
