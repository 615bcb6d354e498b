// Symbols by the name that a user gives.
#pragma once

#include "symbols/store/Snapshot.h"

#include <string>
#include <string_view>
#include <vector>

namespace wren {

// Symbols of these kinds with the name; with "Outer::name", those whose scope ends in Outer. Definitions only, if there
// are any.
std::vector<symbols::Symbol> NamedSymbols(const symbols::Snapshot& snapshot, std::string_view name,
                                          bool (*isWanted)(symbols::SymbolKind kind));

bool IsCallable(symbols::SymbolKind kind); // functions, methods, their declarations, and macros
bool IsClass(symbols::SymbolKind kind);    // what can have bases

// "Outer::name", without arguments.
std::string FullName(const symbols::Symbol& symbol);

// What stands behind the last "::".
std::string_view LastName(std::string_view name);

} // namespace wren
