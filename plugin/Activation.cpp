#include "plugin/Activation.h"

#include "vetch/support/Clock.h"

namespace {

const bigtime_t kActivationTime = 100000; // a tenth of a second, inclusive

} // namespace

BWindow* gJustActivatedWindow = nullptr;
bigtime_t gJustActivatedTime = 0;

void NoteActivation(BWindow* window)
{
    gJustActivatedWindow = window;
    gJustActivatedTime = system_time();
}

void ClearActivation()
{
    gJustActivatedWindow = nullptr;
}

bool WasJustActivated(const BWindow* window)
{
    return window == gJustActivatedWindow && system_time() - gJustActivatedTime <= kActivationTime;
}
