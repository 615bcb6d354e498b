#include "completion/CompletionWindow.h"

CompletionWindow* CompletionWindow::gCompletionWindow = nullptr;

CompletionWindow::CompletionWindow() : TagWindow("", false, FourCC("Pick"))
{
    gCompletionWindow = this;
}

CompletionWindow::~CompletionWindow()
{
    gCompletionWindow = nullptr;
}

// Completion is not offered yet: no key is ever taken for its list.
long CompletionWindow::RouteKeyboardEventIfNeeded(PluginInterface*, const BMessage*)
{
    return 0;
}
