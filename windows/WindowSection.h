// One operation on a window's model, from whichever thread.
#pragma once

#include "vetch/app/BLooper.h"

// Until a window is first shown its creator alone has it, and needs no lock; from then on a section holds the lock. A
// section that does not open belongs to a window that has been quit: leave it alone.
//
// Keep sections short: no waiting, no modal question and no Quit() inside.
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
    const bool running; // as the section began: the first Show() may come inside it
    const bool open;
};
