// Drawing ports: which window measurements are made for. They are kept per thread and change nothing else.
#pragma once

typedef struct OpaqueGraf* GrafPtr;
typedef struct OpaqueWindow* WindowRef;

void GetPort(GrafPtr* port); // the calling thread's current port; null at first
void SetPort(GrafPtr port);
GrafPtr GetWindowPort(WindowRef window);
