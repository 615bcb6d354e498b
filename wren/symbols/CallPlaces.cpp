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

} // namespace wren
