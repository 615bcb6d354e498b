#include "vetch/app/Library.h"

#include <dlfcn.h>

namespace vetch {

const void* LibraryOf(const void* address)
{
    Dl_info info = {};
    return dladdr(address, &info) ? info.dli_fbase : nullptr;
}

const void* LibraryOfClass(const BLooper* looper)
{
    return LibraryOf(*reinterpret_cast<const void* const*>(looper));
}

} // namespace vetch
