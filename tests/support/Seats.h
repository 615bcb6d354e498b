// Records calls to the plug-in's upper floors instead of running them: making tags, and completing.
//
// In programs that link test_seats the linker wraps these operations: calls from other source files arrive here.
#pragma once

#include <string>
#include <vector>

struct Seats {
    // "CreateTags system local", "CreateTags in /directory: main, second", ... in the order of the calls.
    static std::vector<std::string> calls;

    // The completion window's result for a key.
    static long routed;

    static void Reset()
    {
        calls.clear();
        routed = 0;
    }
};
