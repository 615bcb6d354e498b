// The check of a fuzzer's expectations.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the program when 'holds' is false, so that the fuzzing library keeps the input.
inline void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}
