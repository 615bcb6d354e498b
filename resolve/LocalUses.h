// Where a local is used.
#pragma once

#include "resolve/Locals.h"
#include "resolve/Resolver.h"

namespace resolve {

class Question;

// The uses of a local in the text of the question, which found it. The time is in proportion to the text, however many
// mentions of the name one function has.
Uses UsesOfLocal(Question& question, const LocalName& local, const std::string& path, symbols::Limits limits);

} // namespace resolve
