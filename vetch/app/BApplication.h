// The application: the looper of the document thread.
#pragma once

#include "vetch/app/BLooper.h"

class BMenuBar;

// Made once, on the thread that becomes the document thread. It has no thread of its own: the host dispatches its
// messages with vetch::RunPending() while no plug-in call is active. PostMessage() may be called from any thread.
class BApplication : public BLooper {
public:
    BApplication();
    ~BApplication() override; // destroys the loopers that have ended

    void Quit() override; // stops dispatching; its maker destroys it

    BMenuBar* MenuBar() const; // borrowed; null until the host sets one
    void SetMenuBar(BMenuBar* bar);

private:
    BMenuBar* menuBar = nullptr;
};

extern BApplication* be_app; // null while there is no application
