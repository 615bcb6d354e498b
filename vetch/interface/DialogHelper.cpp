#include "vetch/interface/DialogHelper.h"

#include "vetch/interface/BTextControl.h"
#include "vetch/interface/BWindow.h"

#include <cstring>

void DialogHelper::SelectAll(BTextControl* control)
{
    BWindow* window = control->Window();
    if (window == nullptr || !window->Lock())
        return;
    control->Select(0, static_cast<long>(std::strlen(control->Text())));
    window->Unlock();
}
