#include "vetch/app/BApplication.h"
#include "vetch/app/Library.h"
#include "vetch/app/Loop.h"
#include "vetch/app/LooperState.h"
#include "vetch/app/Registry.h"
#include "vetch/support/HeldLocks.h"

#include <cassert>

namespace vetch {

namespace {

// Quits the looper when its class belongs to the library; true when that destroyed it.
bool QuitIfOf(const void* library, LooperToken token)
{
    const RegisteredLooper registered = FindRegistered(token);
    if (!registered.state || registered.looper == be_app)
        return false;
    if (!registered.state->IsPublished()) {
        // Its maker still owns it and may be constructing it: the class is checked when it runs, or when its maker
        // ends.
        registered.state->ForbidLibrary(library);
        return false;
    }
    if (LibraryOfClass(registered.looper) != library)
        return false;
    registered.looper->Quit();
    return !FindLooper(token);
}

} // namespace

void QuitLoopersOf(const void* address)
{
    assert(OnDocumentThread() && HeldLocks() == 0);
    const void* const library = LibraryOf(address);
    if (!library)
        return;
    // Repeats while loopers go: the thread of one may just have made another.
    bool someWent = true;
    while (someWent) {
        someWent = false;
        for (const LooperToken token : Loopers())
            someWent |= QuitIfOf(library, token);
    }
}

} // namespace vetch
