// A number that the user has set in the environment.
#pragma once

#include "base/Result.h"

namespace base {

// The variable's value; 'otherwise' when it is unset or empty. Fails when it is not a number from 1 to 'most'.
Result<unsigned> NumberFrom(const char* variable, unsigned most, unsigned otherwise);

} // namespace base
