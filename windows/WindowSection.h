// One operation on a window's model, on any thread.
#pragma once

#include "vetch/app/BLooper.h"

// Before a window is first shown, only its creator uses it, without a lock; afterwards a section holds the lock. A
// section that does not open belongs to a window that has quit: do not use the window.
//
// Keep sections short: no waits, no modal questions and no Quit() inside.
class WindowSection {
public:
    explicit WindowSection(BLooper& window) : window(window), running(window.HasRun()), open(!running || window.Lock())
    {
    }
    ~WindowSection()
    {
        if (running && open)
            window.Unlock();
    }
    WindowSection(const WindowSection&) = delete;
    WindowSection& operator=(const WindowSection&) = delete;

    explicit operator bool() const { return open; }

private:
    BLooper& window;
    const bool running; // at the section's start: the first Show() may happen inside it
    const bool open;
};
