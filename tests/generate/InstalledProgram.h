// Whether the tags program is installed, as the plug-in finds it to be: it looks with stat(), which is answered here.
#pragma once

#include <deque>

// For as long as a test. Not installed at first.
class InstalledProgram {
public:
    InstalledProgram() { Is({false}); }
    ~InstalledProgram() { answers.clear(); }

    // What it finds when it looks the first time from now on, the second, ...; the last one for all that follow.
    void Is(std::deque<bool> found);

    static std::deque<bool> answers; // empty: the machine's own
    static int looks;                // how often it has looked since Is()
};
