#include "tests/load/ResourceUse.h"

#include <filesystem>
#include <iterator>
#include <malloc.h>
#include <thread>

namespace {

long CountEntries(const char* directory)
{
    using Entries = std::filesystem::directory_iterator;
    return std::distance(Entries(directory), Entries());
}

} // namespace

ResourceUse ResourceUse::Now()
{
    ResourceUse use;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const struct mallinfo2 heap = ::mallinfo2();
    use.bytes = heap.uordblks + heap.hblkhd;
#endif
    use.descriptors = CountEntries("/proc/self/fd");
    use.threads = CountEntries("/proc/self/task");
    return use;
}

ResourceUse ResourceUse::WithThreads(long most, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    ResourceUse use = Now();
    while (use.threads > most && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        use = Now();
    }
    return use;
}

std::string ResourceUse::Text() const
{
    return std::to_string(bytes) + " bytes, " + std::to_string(descriptors) + " descriptors, " +
           std::to_string(threads) + " threads";
}
