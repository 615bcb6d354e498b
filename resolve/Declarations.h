// Declarations in a function: variables and parameters, from their tokens.
#pragma once

#include "resolve/Tokens.h"
#include "tagging/ParsedSource.h"

#include <vector>

namespace resolve {

struct Declared {
    size_t name = kNone; // its token
    Tokens::Range type;  // without what stands around the name
    int pointers = 0;
    bool isFunction = false;   // a pointer to a function, or a block
    Tokens::Range initializer; // the range of a range-based for
    bool isRange = false;
    size_t part = kNone; // the number of a name in a structured binding
    tagging::SymbolKind kind = tagging::SymbolKind::Local;
    bool isWeak = false; // a word in a list of parameters that may be a name
};

// The declarations that a statement begins with; empty for any other statement.
std::vector<Declared> ReadStatement(const Tokens& tokens, Tokens::Range statement);

// Between the parentheses of a function or a lambda.
std::vector<Declared> ReadParameters(const Tokens& tokens, size_t open);

// "- (void)at:(int)x with:(id)y": from '-' or '+' to the body or the semicolon.
std::vector<Declared> ReadMethodParameters(const Tokens& tokens, Tokens::Range head);

// "template <class T, int N>": from "<" on.
std::vector<Declared> ReadTemplateParameters(const Tokens& tokens, size_t open);

} // namespace resolve
