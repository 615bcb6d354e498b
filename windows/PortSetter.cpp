#include "windows/PortSetter.h"

#include "vetch/interface/BWindow.h"

PortSetter::PortSetter(BView* view)
{
    GetPort(&saved);
    SetPort(GetWindowPort(view->Window()->NativeWindow()));
}

PortSetter::~PortSetter()
{
    SetPort(saved);
}
