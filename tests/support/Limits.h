// Limits on system resources, each for the lifetime of an object.
#pragma once

#include <cstdio>
#include <sys/resource.h>

class Limit {
public:
    Limit(__rlimit_resource what, rlim_t most) : what(what)
    {
        ::getrlimit(what, &before);
        const rlimit limit = {most, before.rlim_max};
        if (::setrlimit(what, &limit) != 0)
            std::perror("Limit");
    }
    ~Limit() { ::setrlimit(what, &before); }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;

private:
    const __rlimit_resource what;
    rlimit before;
};

// No more files can be opened.
class NoDescriptors : Limit {
public:
    NoDescriptors() : Limit(RLIMIT_NOFILE, 0) {}
};

// Memory cannot be limited with sanitizers: they abort without memory for their shadows.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kMemoryCanBeLimited = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
constexpr bool kMemoryCanBeLimited = false;
#else
constexpr bool kMemoryCanBeLimited = true;
#endif
#else
constexpr bool kMemoryCanBeLimited = true;
#endif

// Limits the process to this much additional memory. Memory that it has freed before does not count: use it at the
// start of a process.
class LittleMemory : Limit {
public:
    explicit LittleMemory(rlim_t more) : Limit(RLIMIT_AS, Used() + more) {}

private:
    static rlim_t Used()
    {
        unsigned long pages = 0;
        if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
            if (std::fscanf(file, "%lu", &pages) != 1)
                pages = 0;
            std::fclose(file);
        }
        return static_cast<rlim_t>(pages) * 4096;
    }
};
