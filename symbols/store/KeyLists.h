// What the keys of a new segment lead to.
#pragma once

#include "symbols/store/Format.h"

#include <cstdint>
#include <string>
#include <vector>

namespace symbols {

// The pairs of one sort of list, gathered by key. Values of one key must come in rising order; repeated ones count
// once.
// Not thread-safe.
class KeyListTable {
public:
    void Put(TextNumber key, std::uint32_t value) { pairs.push_back({key, value}); }
    void Gather(size_t texts); // after all Put()s; 'texts': how many numbers there are

    bool Has(TextNumber key) const { return begins[key] != begins[key + 1]; }
    void Append(TextNumber key, std::string& out) const; // as in Section::Postings, with the length

private:
    struct Pair {
        TextNumber key;
        std::uint32_t value;
    };
    std::vector<Pair> pairs;
    std::vector<std::uint32_t> begins; // in 'values', for each text
    std::vector<std::uint32_t> values;
};

} // namespace symbols
