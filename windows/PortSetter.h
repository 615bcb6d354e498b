// Makes a view's drawing port the current one for a scope.
#pragma once

#include "vetch/interface/Carbon.h"

class BView;

// Text is measured for the calling thread's current port. The view must be in a window.
class PortSetter {
public:
    explicit PortSetter(BView* view);
    ~PortSetter();
    PortSetter(const PortSetter&) = delete;
    PortSetter& operator=(const PortSetter&) = delete;

private:
    GrafPtr saved = nullptr;
};
