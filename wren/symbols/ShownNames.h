// Names of symbols for people.
#pragma once

#include "tagging/ParsedSource.h"

#include <string>

namespace wren {

// Names that ctags gives to what has none ("__anon" and digits) as "(unnamed)".
std::string WithoutMadeNames(std::string name);

// For the user: "Outer::name", with the signature of what can be called: "Outer::name(int a, int b)".
std::string QualifiedName(const tagging::Symbol& symbol);

} // namespace wren
