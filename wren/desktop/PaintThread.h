// The thread that Qt draws with.
#pragma once

namespace wren {

// Qt hands parts of large drawings to its global pool of threads and waits for them. When the system does not start the
// pool's thread, it waits for ever: an editor with unsaved texts would hang. So the pool has one thread, which is
// started here and stays. False when the system cannot start a thread. Call it once, on the GUI thread, when there is
// an application.
bool HoldPaintThread();

} // namespace wren
