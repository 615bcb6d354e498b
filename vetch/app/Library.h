// Which shared library something belongs to.
#pragma once

class BLooper;

namespace vetch {

// Where the library or program that contains 'address' is loaded; null when none does.
const void* LibraryOf(const void* address);

// That of the looper's class, told by its virtual table. For who may touch the looper.
const void* LibraryOfClass(const BLooper* looper);

} // namespace vetch
