// Notifies the document thread of work for RunPending().
#pragma once

#include <functional>

namespace vetch {

// Calls 'wake', on any thread, when RunPending() has new work, or when a plug-in call that delayed work ends. It must
// not call back into the framework. After the return the previous function is not called again.
void SetWakeUp(std::function<void()> wake);

void WakeDocumentThread(); // any thread, with no mutex of the framework held

} // namespace vetch
