// Finds the shared library of an address or a class.
#pragma once

class BLooper;

namespace vetch {

// The load address of the library or program that contains 'address'; null when none does.
const void* LibraryOf(const void* address);

// The library of the looper's class, found by its virtual table. For code that is allowed to touch the looper.
const void* LibraryOfClass(const BLooper* looper);

} // namespace vetch
