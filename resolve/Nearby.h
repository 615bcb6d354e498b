// How much, and how near to a place, a text itself uses a name: a writer often repeats what stands nearby.
#pragma once

#include "resolve/Tokens.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace resolve {

class Nearby {
public:
    // 'place' is the index of the first token from the place on; 'sign' that of the ".", "->" or "::" before the place,
    // or kNone. The tokens must outlive this.
    Nearby(const Tokens& tokens, size_t place, size_t sign);

    // Each use counts, a near one more than a far one; 0 when it is not used.
    std::uint64_t Anywhere(std::string_view name) const { return Get(anywhere, name); }
    // Uses behind the same receiver count most, then those behind any.
    std::uint64_t Fitting(std::string_view name) const { return Get(fitting, name); }

private:
    using Weights = std::unordered_map<std::string_view, std::uint64_t>;

    static std::uint64_t Get(const Weights& from, std::string_view name);

    Weights anywhere;
    Weights fitting;
};

// The name before a ".", "->" or "::": "list" in "list[0].size", "First" in "a.First(1)->"; "" for none.
std::string_view ReceiverName(const Tokens& tokens, size_t sign);

} // namespace resolve
