// The process's environment, in tests.
#pragma once

#include <cstdlib>

// Null removes the variable. No other thread may read the environment meanwhile.
inline void SetVariable(const char* name, const char* value)
{
    if (value == nullptr)
        ::unsetenv(name);
    else
        ::setenv(name, value, 1);
}
