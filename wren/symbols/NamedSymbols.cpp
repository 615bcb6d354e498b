#include "wren/symbols/NamedSymbols.h"

#include <algorithm>

namespace wren {

namespace {

using Kind = symbols::SymbolKind;

bool EndsInName(std::string_view full, std::string_view end)
{
    return full.ends_with(end) &&
           (full.size() == end.size() || full.substr(0, full.size() - end.size()).ends_with("::"));
}

} // namespace

bool IsCallable(Kind kind)
{
    switch (kind) {
    case Kind::Function:
    case Kind::Prototype:
    case Kind::Macro:
    case Kind::InstanceMethod:
    case Kind::ClassMethod:
    case Kind::InstanceMethodDeclaration:
    case Kind::ClassMethodDeclaration:
        return true;
    default:
        return false;
    }
}

bool IsClass(Kind kind)
{
    switch (kind) {
    case Kind::Class:
    case Kind::Struct:
    case Kind::Interface:
    case Kind::Implementation:
    case Kind::Protocol:
    case Kind::Category:
        return true;
    default:
        return false;
    }
}

std::string FullName(const symbols::Symbol& symbol)
{
    std::string name(symbol.scope);
    if (!name.empty())
        name += "::";
    return name += symbol.name;
}

std::string_view LastName(std::string_view name)
{
    const size_t colons = name.rfind("::");
    return colons == std::string_view::npos ? name : name.substr(colons + 2);
}

std::vector<symbols::Symbol> NamedSymbols(const symbols::Snapshot& snapshot, std::string_view name,
                                          bool (*isWanted)(Kind kind))
{
    std::vector<symbols::Symbol> found = snapshot.ByName(LastName(name), {}).found;
    std::erase_if(found, [&](const symbols::Symbol& symbol) {
        return !isWanted(symbol.kind) || !EndsInName(FullName(symbol), name);
    });
    if (std::ranges::any_of(found, &symbols::Symbol::isDefinition))
        std::erase_if(found, [](const symbols::Symbol& symbol) { return !symbol.isDefinition; });
    return found;
}

} // namespace wren
