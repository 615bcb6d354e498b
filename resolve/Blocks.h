// What the braces of a source enclose, from the tokens before them.
#pragma once

#include "resolve/Tokens.h"

namespace resolve {

enum class BlockKind {
    Scope,     // a class, a namespace, an enum, extern "C"
    Function,  // its body, also of a method
    Lambda,    // its body, or that of a block
    Statement, // nested statements
    Value,     // an initialiser
};

BlockKind KindOfBlock(const Tokens& tokens, size_t open);

// The first token of the statement or declaration that a '{' belongs to.
size_t HeadOfBlock(const Tokens& tokens, size_t open);

// The '(' of a function's or lambda's parameters, for the '{' of its body; kNone without any.
size_t ParametersOfBlock(const Tokens& tokens, size_t open);

// The '[' or '^' that begins a lambda or a block.
size_t BeginOfLambda(const Tokens& tokens, size_t open);

// "- (void) draw" outside of all brackets: the sign of a method of Objective-C.
bool BeginsMethod(const Tokens& tokens, size_t sign);

// Whether a bracket is inside of a function's body.
bool IsInFunction(const Tokens& tokens, size_t index);

} // namespace resolve
