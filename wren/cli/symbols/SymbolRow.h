// One answer of a command about symbols, as a line for people or programs.
#pragma once

#include "resolve/Resolver.h"
#include "tagging/ParsedSource.h"

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace wren {

// The fields of a symbol that do not depend on who asked: name, kind, scope, type, signature and so on. Empty ones are
// left out.
nlohmann::ordered_json SymbolJson(const tagging::Symbol& symbol);

std::string_view NameOf(resolve::Use::Role role); // "declaration", "call" ...

// A line of JSON. Bytes that are not UTF-8 become U+FFFD.
std::string JsonLine(const nlohmann::ordered_json& value);

// An absolute path as the user reads it best: relative to the current directory if it is below that. 'current' is
// canonical.
std::string ShownPath(const std::string& path, const std::string& current);

} // namespace wren
