#include "wren/cli/SymbolPattern.h"

#include "scan/PatternScan.h"
#include "scan/Text.h"

#include "base/Identifier.h"

#include <algorithm>
#include <string_view>

namespace wren {

namespace {

// Parses a symbol from its beginning, one part at a time; each part returns whether it was there.
class SymbolReader {
public:
    explicit SymbolReader(std::string_view symbol) : rest(symbol) {}

    bool AtEnd() const { return rest.empty(); }
    char Next() const { return AtEnd() ? '\0' : rest.front(); }

    bool TakeIdentifier()
    {
        const auto end = std::ranges::find_if_not(rest, base::IsIdentifierCharacter);
        const std::string_view word(rest.begin(), end);
        rest.remove_prefix(word.size());
        return base::IsIdentifier(word);
    }

    bool Take(std::string_view text)
    {
        if (!rest.starts_with(text))
            return false;
        rest.remove_prefix(text.size());
        return true;
    }

    // From a '<' to its matching '>'; false when that is missing.
    bool TakeTemplateArguments()
    {
        int depth = 0;
        for (size_t offset = 0; offset < rest.size(); ++offset) {
            depth += rest[offset] == '<' ? 1 : rest[offset] == '>' ? -1 : 0;
            if (std::string_view(";{}\"'").find(rest[offset]) != std::string_view::npos)
                return false;
            if (depth > 0)
                continue;
            rest.remove_prefix(offset + 1);
            return true;
        }
        return false;
    }

private:
    std::string_view rest;
};

bool IsName(const std::string& symbol)
{
    SymbolReader reader(symbol);
    do {
        if (!reader.TakeIdentifier())
            return false;
        if (reader.Next() == '<' && !reader.TakeTemplateArguments())
            return false;
        if (reader.AtEnd())
            return true;
    } while (reader.Take("::"));
    return false;
}

bool IsSelector(const std::string& symbol)
{
    SymbolReader reader(symbol);
    do {
        if (!reader.TakeIdentifier() || !reader.Take(":"))
            return false;
    } while (!reader.AtEnd());
    return true;
}

} // namespace

std::optional<std::string> PatternForSymbol(const std::string& symbol)
{
    constexpr size_t kLongest = 1024; // scanners refuse more
    if (symbol.size() > kLongest)
        return std::nullopt;
    if (IsSelector(symbol))
        return symbol;
    if (!IsName(symbol))
        return std::nullopt;
    const long end = static_cast<long>(symbol.size());
    const std::optional<scan::Pattern> found = scan::PatternForLookup(scan::StringText(symbol), end, end);
    return found ? std::optional(found->text) : std::nullopt;
}

} // namespace wren
