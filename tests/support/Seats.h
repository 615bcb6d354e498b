// What the plug-in asks of its upper floors, recorded instead of done: making tags, and completing.
#pragma once

#include "completion/CompletionCommands.h"
#include "generate/CreateTags.h"

#include <string>
#include <vector>

// Records from its making to its end. One at a time; document thread.
class Seats {
public:
    Seats();
    ~Seats();
    Seats(const Seats&) = delete;
    Seats& operator=(const Seats&) = delete;

    // "CreateTags system local", "CreateTags in /directory: main, second", ... in the order of the calls.
    static std::vector<std::string> calls;

    static void Reset();

    // What the completion window answers to a key.
    static long routed;

private:
    const TagsActions tags = gTagsActions;
    const CompletionActions completion = gCompletionActions;
};
