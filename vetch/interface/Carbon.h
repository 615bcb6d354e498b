// Drawing ports: the window for measurements. Each thread has one; they change nothing else.
#pragma once

typedef struct OpaqueGraf* GrafPtr;
typedef struct OpaqueWindow* WindowRef;

void GetPort(GrafPtr* port); // the calling thread's port; null at first
void SetPort(GrafPtr port);
GrafPtr GetWindowPort(WindowRef window);
