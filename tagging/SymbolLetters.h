// The letters of kinds in tags files.
#pragma once

#include "tagging/ParsedSource.h"

namespace tagging {

SymbolKind KindOfObjectiveCLetter(char letter);
char LetterOf(SymbolKind kind); // '\0' for None

} // namespace tagging
