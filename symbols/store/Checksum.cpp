#include "symbols/store/Checksum.h"

#include <cstring>

namespace symbols {

namespace {

constexpr std::uint64_t kFactor = 0x9e3779b97f4a7c15u;

// Reversible for a given state, so that no change of the word is lost.
std::uint64_t Mixed(std::uint64_t state, std::uint64_t word)
{
    state = (state ^ word) * kFactor;
    return state ^ (state >> 29);
}

} // namespace

std::uint64_t Checksum(std::string_view data)
{
    // Four independent chains keep the processor's multipliers busy.
    std::uint64_t lanes[4] = {1, 2, 3, 4};
    const size_t length = data.size();
    for (; data.size() >= sizeof(lanes); data.remove_prefix(sizeof(lanes))) {
        std::uint64_t words[4];
        std::memcpy(words, data.data(), sizeof(words));
        for (size_t i = 0; i < 4; i++)
            lanes[i] = Mixed(lanes[i], words[i]);
    }
    char rest[sizeof(lanes)] = {};
    std::memcpy(rest, data.data(), data.size());
    std::uint64_t words[4];
    std::memcpy(words, rest, sizeof(words));
    std::uint64_t sum = length;
    for (size_t i = 0; i < 4; i++)
        sum = Mixed(sum, Mixed(lanes[i], words[i]));
    return sum;
}

} // namespace symbols
