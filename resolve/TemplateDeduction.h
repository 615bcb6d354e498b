// The template arguments of a call.
#pragma once

#include "resolve/Type.h"

#include <vector>

namespace resolve {

// What the parameters of a function's template stand for: the written arguments, or what the types of the passed values
// say. 'passed' may be shorter than the parameters, and may hold unknown types.
Bindings DeducedFor(const Symbol& function, const std::vector<Type>& written, const std::vector<Type>& passed);

} // namespace resolve
