// Telling the document thread that there is something for RunPending().
#pragma once

#include <functional>

namespace vetch {

// Called, from any thread, when there is something new for RunPending(), or when a plug-in call that kept something
// waiting has ended. It must not call back into the framework. Once this returns the former function is called no more.
void SetWakeUp(std::function<void()> wake);

void WakeDocumentThread(); // any thread, no mutex of the framework held

} // namespace vetch
