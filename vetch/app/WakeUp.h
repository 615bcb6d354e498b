// Telling the document thread that there is something for RunPending().
#pragma once

namespace vetch {

void WakeDocumentThread(); // any thread, no mutex of the framework held

} // namespace vetch
