// Pseudo-random numbers for tests of very many cases: the same sequence every time.
#pragma once

#include <cstddef>
#include <iterator>
#include <string>

class Sequence {
public:
    explicit Sequence(unsigned long long seed = 1) : state(seed) {}

    size_t Below(size_t limit)
    {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return (state >> 33) % limit;
    }
    template <class Choices>
    std::string One(const Choices& choices)
    {
        return choices[Below(std::size(choices))];
    }

private:
    unsigned long long state;
};
