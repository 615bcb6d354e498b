#include "tagging/ParsedSource.h"

#include "base/Hash.h"

#include <iterator>

namespace tagging {

std::string_view LongName(SymbolKind kind)
{
    static constexpr std::string_view kNames[] = {
        "",
        "macro",
        "enumerator",
        "function",
        "enum",
        "member",
        "prototype",
        "struct",
        "typedef",
        "union",
        "variable",
        "externvar",
        "class",
        "namespace",
        "alias",
        "name",
        "using",
        "tparam",
        "local",
        "parameter",
        "macroparam",
        "label",
        "interface",
        "implementation",
        "protocol",
        "category",
        "method",
        "class method",
        "method declaration",
        "class method declaration",
        "property",
        "field",
        "slot",
        "signal",
        "property",
    };
    static_assert(std::size(kNames) == static_cast<size_t>(SymbolKind::QtProperty) + 1);
    return kNames[static_cast<size_t>(kind)];
}

std::uint64_t ContentHash(std::string_view text)
{
    return base::Fnv1a(text);
}

} // namespace tagging
