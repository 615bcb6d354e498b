#include "wren/symbols/ShownNames.h"

#include "wren/symbols/Signatures.h"

#include <algorithm>
#include <string_view>

namespace wren {

std::string WithoutMadeNames(std::string name)
{
    constexpr std::string_view kMade = "__anon";
    constexpr std::string_view kShown = "(unnamed)";
    for (size_t at = name.find(kMade); at != std::string::npos; at = name.find(kMade, at + 1)) {
        const size_t end = std::min(name.find_first_not_of("0123456789abcdef", at + kMade.size()), name.size());
        if (end >= at + kMade.size() + 8) // a user's own name is shorter, or has other letters
            name.replace(at, end - at, kShown);
    }
    return name;
}

std::string QualifiedName(const tagging::Symbol& symbol)
{
    std::string name(symbol.scope);
    if (!name.empty())
        name += "::";
    name += symbol.name;
    return WithoutMadeNames(name += WithBlanksBehindCommas(symbol.signature));
}

} // namespace wren
