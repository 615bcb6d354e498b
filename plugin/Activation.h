// Which document window was activated just now: the click that activates a window is not meant for its text.
#pragma once

#include "vetch/support/Types.h"

class BWindow;

// Document thread only. The window is compared and never used: it may be gone.
extern BWindow* gJustActivatedWindow; // null after most events
extern bigtime_t gJustActivatedTime;

void NoteActivation(BWindow* window);
void ClearActivation();

// Whether 'window' was activated so lately that a click in it may be the one that did it.
bool WasJustActivated(const BWindow* window);
