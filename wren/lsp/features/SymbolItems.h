// Symbols as lists and trees of the client show them.
#pragma once

#include "tagging/ParsedSource.h"

#include <string>

namespace wren::lsp {

// Whether it belongs to a class of C++, and whether it is such a class's constructor.
bool IsInClass(const tagging::Symbol& symbol);
bool IsConstructor(const tagging::Symbol& symbol);

// The protocol's SymbolKind. A function in a class is a method, one with the class's name a constructor.
int SymbolKindOf(const tagging::Symbol& symbol);

// "(anonymous struct)" for what has no name, "Name (Category)" for a category of Objective-C. Never empty.
std::string ItemName(const tagging::Symbol& symbol);

// "Outer::Inner" for people; "" for none.
std::string ContainerName(const tagging::Symbol& symbol);

} // namespace wren::lsp
