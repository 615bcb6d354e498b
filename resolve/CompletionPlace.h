// A place where a name is typed, and what is known there before it is complete.
#pragma once

#include "resolve/Question.h"

#include <cstddef>
#include <string_view>

namespace resolve {

// Borrows all; for one question, on its thread.
struct CompletionPlace {
    Question& question;
    const size_t start;  // bytes: where the typed part of the name begins
    const size_t before; // the token before it, or kNone
    const std::string_view typed;
    const size_t wanted; // how many names are enough

    World& GetWorld() const { return question.GetWorld(); }
    const Tokens& GetTokens() const { return question.GetTokens(); }
};

} // namespace resolve
