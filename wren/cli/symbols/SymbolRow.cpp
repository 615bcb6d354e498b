#include "wren/cli/symbols/SymbolRow.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace wren {

namespace {

using Json = nlohmann::ordered_json;
using Access = tagging::Symbol::Access;

void PutText(Json& json, const char* key, std::string_view text)
{
    if (!text.empty())
        json[key] = text;
}

std::string_view NameOfAccess(Access access)
{
    switch (access) {
    case Access::Public:
        return "public";
    case Access::Protected:
        return "protected";
    case Access::Private:
        return "private";
    default:
        return "";
    }
}

} // namespace

Json SymbolJson(const tagging::Symbol& symbol)
{
    Json json;
    json["name"] = symbol.name;
    PutText(json, "kind", tagging::LongName(symbol.kind));
    PutText(json, "scope", symbol.scope);
    PutText(json, "scopeKind", symbol.scope.empty() ? "" : tagging::LongName(symbol.scopeKind));
    PutText(json, "signature", symbol.signature);
    PutText(json, "type", symbol.type);
    PutText(json, "bases", symbol.bases);
    PutText(json, "templateParameters", symbol.templateParameters);
    PutText(json, "target", symbol.target);
    PutText(json, "access", NameOfAccess(symbol.access));
    json["definition"] = symbol.isDefinition;
    if (symbol.endLine != 0)
        json["endLine"] = symbol.endLine;
    return json;
}

std::string_view NameOf(resolve::Use::Role role)
{
    switch (role) {
    case resolve::Use::Role::Declaration:
        return "declaration";
    case resolve::Use::Role::Definition:
        return "definition";
    case resolve::Use::Role::Call:
        return "call";
    default:
        return "other";
    }
}

std::string JsonLine(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

// Every path is below "/", and stays absolute there.
std::string ShownPath(const std::string& path, const std::string& current)
{
    return path.starts_with(current + "/") ? path.substr(current.size() + 1) : path;
}

} // namespace wren
