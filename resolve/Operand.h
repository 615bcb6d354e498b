// The operand in front of a postfix operator.
#pragma once

#include "resolve/Tokens.h"

namespace resolve {

// The index of its first token: "a" for the '.' behind "a.b(c)[i]", where 'end' is the operator's index. 'end' itself
// when nothing there can be an operand.
size_t BeginOfOperand(const Tokens& tokens, size_t end);

} // namespace resolve
