// What a process holds.
#pragma once

#include <cstddef>
#include <string>

struct ResourceUse {
    std::size_t bytes = 0; // asked of the heap and not given back; 0 where a sanitizer has a heap of its own
    long descriptors = 0;
    long threads = 0;

    static ResourceUse Now();
    std::string Text() const;
};
