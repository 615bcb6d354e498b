// What the plug-in asks of its upper floors, recorded instead of done: making tags, and completing.
//
// Programs that link test_seats have these operations wrapped by the linker: calls from other source files arrive here.
#pragma once

#include <string>
#include <vector>

struct Seats {
    // "CreateTags system local", "CreateTags in /directory: main, second", ... in the order of the calls.
    static std::vector<std::string> calls;

    // What the completion window answers to a key.
    static long routed;

    static void Reset()
    {
        calls.clear();
        routed = 0;
    }
};
