// Whether the plug-in finds the tags program installed.
#pragma once

#include "generate/CreateTags.h"

#include <deque>

// For as long as a test. Not installed at first.
class InstalledProgram {
public:
    InstalledProgram();
    ~InstalledProgram();
    InstalledProgram(const InstalledProgram&) = delete;
    InstalledProgram& operator=(const InstalledProgram&) = delete;

    // What it finds when it looks the first time from now on, the second, ...; the last one for all that follow.
    void Is(std::deque<bool> found);

    static int looks; // how often it has looked since Is()

private:
    static std::deque<bool> answers;
    bool (*const machines)(const char* path) = gTagsActions.exists;
};
