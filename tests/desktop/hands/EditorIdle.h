// Waits until the desktop editor is idle, and what has to be done for that to be known.
#pragma once

class WindowManager;

namespace wren {
class Editor;
}

// What was posted has been dispatched, and shown; timers and background loads may still be to come. GUI thread.
void SettleEditor(wren::Editor& editor, WindowManager& manager);

// Qt paints big pictures on threads that it starts with the first one. Who waits for background work counts threads,
// and has to find these there already: before the editor is made.
void StartPainters();
