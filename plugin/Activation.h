// The document window that was activated just now: the click that activates a window does not count as a click in its
// text.
#pragma once

#include "vetch/support/Types.h"

class BWindow;

// Document thread only. For comparison only: the window may be gone.
extern BWindow* gJustActivatedWindow; // null after most events
extern bigtime_t gJustActivatedTime;

void NoteActivation(BWindow* window);
void ClearActivation();

// True when 'window' was activated so recently that a click in it may be the activating click.
bool WasJustActivated(const BWindow* window);
