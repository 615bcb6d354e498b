#include "vetch/interface/BAlert.h"

#include "vetch/display/Display.h"
#include "vetch/support/HeldLocks.h"

#include <cassert>

BAlert::BAlert(const char* title, const char* text, const char* button0, const char* button1, const char* button2)
    : title(title == nullptr ? "" : title), text(text == nullptr ? "" : text)
{
    for (const char* button : {button0, button1, button2})
        if (button != nullptr)
            buttons.push_back(button);
    if (buttons.empty())
        buttons.push_back("OK");
}

long BAlert::Go()
{
    assert(vetch::HeldLocks() == 0); // a thread that waits for the lock would wait for the user
    const long answer = vetch::CurrentDisplay()->RunAlert({title, text, buttons});
    delete this;
    return answer;
}
