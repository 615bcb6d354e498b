// What the tokens before a place say about the kinds of names that are written there.
#pragma once

#include "resolve/Kinds.h"
#include "resolve/Tokens.h"

namespace resolve {

enum class Slot {
    Any,       // nothing is known
    Statement, // the first word of a statement: "{ x"
    Value,     // "= x", "f(a, x": no type
    Constant,  // "case x"
    Type,      // "static x", "int f(x" outside of functions
    Tag,       // "struct x"
};

// 'before' is the last token before the place, or kNone. A type is a value of C++, too ("= Shape(1)"), so most slots
// are those of C and Objective-C alone.
Slot SlotBehind(const Tokens& tokens, size_t before, bool isCplusplus);

// False for what is hardly ever written there; it may still be meant.
bool Fits(SymbolKind kind, bool hasParameters, Slot slot);

} // namespace resolve
