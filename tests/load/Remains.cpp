#include "tests/load/Remains.h"

#include <filesystem>
#include <iterator>
#include <malloc.h>

namespace {

long CountEntries(const char* directory)
{
    using Entries = std::filesystem::directory_iterator;
    return std::distance(Entries(directory), Entries());
}

} // namespace

Remains Remains::Now()
{
    Remains remains;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const struct mallinfo2 heap = ::mallinfo2();
    remains.bytes = heap.uordblks + heap.hblkhd;
#endif
    remains.descriptors = CountEntries("/proc/self/fd");
    remains.threads = CountEntries("/proc/self/task");
    return remains;
}

std::string Remains::Text() const
{
    return std::to_string(bytes) + " bytes, " + std::to_string(descriptors) + " descriptors, " +
           std::to_string(threads) + " threads";
}
