// What sorts of symbols there are.
#pragma once

#include "symbols/store/Snapshot.h"

namespace resolve {

using symbols::Symbol;
using symbols::SymbolKind;

bool IsMemberLike(const Symbol& symbol);
bool IsCallable(SymbolKind kind);
bool LooksLikeMacroCall(const Symbol& symbol); // "TEST_F(Suite, Name) {": a function without a type
bool IsMethod(SymbolKind kind);                // of Objective-C

} // namespace resolve
