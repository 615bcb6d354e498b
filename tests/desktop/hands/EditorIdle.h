// Waits until the desktop editor is idle.
#pragma once

class WindowManager;

namespace wren {
class Editor;
}

// What was posted has been dispatched, and shown; timers and background loads may still be to come. GUI thread.
void SettleEditor(wren::Editor& editor, WindowManager& manager);
