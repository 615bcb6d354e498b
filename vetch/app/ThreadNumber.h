// Which thread is which.
#pragma once

#include <cstdint>

namespace vetch {

// Names a thread and never another one: unlike the system's ids, which are given again.
using ThreadNumber = std::uint64_t;
constexpr ThreadNumber kNoThread = 0;

ThreadNumber CurrentThread();

ThreadNumber DocumentThread(); // kNoThread while there is no application
void SetDocumentThread(ThreadNumber thread);

// True on the thread that made the application; false everywhere while there is none.
bool OnDocumentThread();

} // namespace vetch
