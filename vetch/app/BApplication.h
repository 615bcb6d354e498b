// The application: the looper of the document thread.
#pragma once

#include "vetch/app/BLooper.h"

class BMenuBar;

// Made once, on the thread that becomes the document thread. It has no thread of its own: the host dispatches its
// messages with vetch::RunPending() whenever no plug-in call is active. PostMessage() may be called from any thread.
class BApplication : public BLooper {
public:
    BApplication();
    ~BApplication() override; // destroys the loopers that have ended

    void Quit() override; // dispatches nothing more; whoever made the application destroys it

    BMenuBar* MenuBar() const; // borrowed; null until the host set one
    void SetMenuBar(BMenuBar* bar);

private:
    BMenuBar* menuBar = nullptr;
};

extern BApplication* be_app; // null before the application is made and after it is gone
