// Records the plug-in's calls of its upper floors, making tags and completing, instead of executing them.
#pragma once

#include "completion/CompletionCommands.h"
#include "generate/CreateTags.h"

#include <string>
#include <vector>

// Records during its lifetime. One at a time; document thread.
class Seats {
public:
    Seats();
    ~Seats();
    Seats(const Seats&) = delete;
    Seats& operator=(const Seats&) = delete;

    // "CreateTags system local", "CreateTags in /directory: main, second", ... in the order of the calls.
    static std::vector<std::string> calls;

    static void Reset();

    // The completion window's result for a key.
    static long routed;

private:
    const TagsActions tags = gTagsActions;
    const CompletionActions completion = gCompletionActions;
};
