// The parts of an Objective-C message as they are written.
#pragma once

#include "resolve/Tokens.h"

#include <optional>
#include <string>

namespace resolve {

// The selector of the message around a word of it, or in "@selector(...)"; the word itself when there is no colon.
std::string SelectorAt(const Tokens& tokens, size_t word);

// The tokens of that message's receiver; absent outside of brackets.
std::optional<Tokens::Range> ReceiverOf(const Tokens& tokens, size_t word);

} // namespace resolve
