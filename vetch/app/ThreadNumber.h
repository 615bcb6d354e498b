// Numbers of threads.
#pragma once

#include <cstdint>

namespace vetch {

// Never reused, unlike the system's thread ids.
using ThreadNumber = std::uint64_t;
constexpr ThreadNumber kNoThread = 0;

ThreadNumber CurrentThread();

ThreadNumber DocumentThread(); // kNoThread while there is no application
void SetDocumentThread(ThreadNumber thread);

// True on the thread that made the application; false everywhere while there is none.
bool OnDocumentThread();

} // namespace vetch
