// What a fuzzer expects of everything that it tries.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the program, for the fuzzing library to keep what was tried.
inline void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}
