#include "wren/cli/SymbolText.h"

#include <regex>

namespace wren {

std::optional<SymbolText> TextForSymbol(const std::string& symbol)
{
    static const std::regex selector("([A-Za-z_][A-Za-z0-9_]*:)+");
    static const std::regex name("([A-Za-z_][A-Za-z0-9_]*(<[^;{}\"']*>)?::)*[A-Za-z_][A-Za-z0-9_]*(<[^;{}\"']*>)?");
    constexpr size_t kLongest = 1024; // scanners refuse more, and the expressions recurse
    if (symbol.size() > kLongest)
        return std::nullopt;
    if (std::regex_match(symbol, name))
        return SymbolText{symbol, static_cast<long>(symbol.size())};
    if (!std::regex_match(symbol, selector))
        return std::nullopt;
    SymbolText send;
    for (const char c : symbol)
        send.text += c == ':' ? std::string(":0 ") : std::string(1, c);
    send.text += ";";
    send.caret = 1;
    return send;
}

} // namespace wren
