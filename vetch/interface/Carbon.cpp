#include "vetch/interface/Carbon.h"

namespace {

thread_local GrafPtr gPort = nullptr;

} // namespace

void GetPort(GrafPtr* port)
{
    *port = gPort;
}

void SetPort(GrafPtr port)
{
    gPort = port;
}

GrafPtr GetWindowPort(WindowRef window)
{
    return reinterpret_cast<GrafPtr>(window);
}
