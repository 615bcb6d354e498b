#include "completion/ClickFilter.h"

#include "completion/CompletionWindow.h"
#include "vetch/app/BMessage.h"
#include "vetch/app/Modifiers.h"

filter_result ClickFilter::Filter(BMessage* message, BHandler**)
{
    if (message->what == B_MOUSE_DOWN)
        window->SetFocus(true);
    return B_DISPATCH_MESSAGE;
}
