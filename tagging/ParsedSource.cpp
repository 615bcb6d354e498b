#include "tagging/ParsedSource.h"

#include <cstring>
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
    static_assert(std::size(kNames) == static_cast<size_t>(kLastSymbolKind) + 1);
    return kNames[static_cast<size_t>(kind)];
}

// Eight bytes at a time: a byte at a time would take longer than finding all names.
std::uint64_t ContentHash(std::string_view text)
{
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15u;
    std::uint64_t hash = text.size();
    const auto add = [&hash](std::uint64_t part) {
        hash = (hash ^ part) * kFactor;
        hash ^= hash >> 32;
    };
    while (text.size() >= sizeof(std::uint64_t)) {
        std::uint64_t part;
        std::memcpy(&part, text.data(), sizeof part);
        add(part);
        text.remove_prefix(sizeof part);
    }
    std::uint64_t last = 0;
    text.copy(reinterpret_cast<char*>(&last), text.size()); // memcpy() refuses the address of an empty text
    add(last);
    add(0);
    return hash;
}

} // namespace tagging
