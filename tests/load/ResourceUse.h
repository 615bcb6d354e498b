// What a process holds.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

struct ResourceUse {
    std::size_t bytes = 0; // asked of the heap and not given back; 0 where a sanitizer has a heap of its own
    long descriptors = 0;
    long threads = 0;

    static ResourceUse Now();
    // As soon as there are no more threads than that, or at the limit with those that stay.
    static ResourceUse WithThreads(long most, std::chrono::milliseconds limit);
    std::string Text() const;
};
