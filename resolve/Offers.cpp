#include "resolve/Offers.h"

#include <algorithm>
#include <cctype>

namespace resolve {

namespace {

bool IsOffered(const Symbol& symbol)
{
    return !symbol.name.empty() && !symbol.name.starts_with("__anon") && !symbol.name.starts_with("operator ") &&
           symbol.name[0] != '~' && symbol.kind != SymbolKind::UsingNamespace;
}

} // namespace

bool Offers::IsTyped(std::string_view name) const
{
    const bool isExact = std::any_of(typed.begin(), typed.end(), [](unsigned char c) { return std::isupper(c) != 0; });
    if (isExact || name.size() < typed.size())
        return name.starts_with(typed);
    return std::equal(typed.begin(), typed.end(), name.begin(),
                      [](unsigned char a, unsigned char b) { return a == b || a == std::tolower(b); });
}

void Offers::Add(const Symbol& symbol, How how, int group)
{
    if (IsOffered(symbol) && IsTyped(symbol.name) && names.insert(symbol.name).second)
        offers.push_back({symbol, how, group, offers.size()});
}

} // namespace resolve
