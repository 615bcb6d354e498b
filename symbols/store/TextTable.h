// Texts, each once, by number.
#pragma once

#include "symbols/store/Format.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// Not thread-safe.
class TextTable {
public:
    TextTable() { Put(""); }

    TextNumber Put(std::string_view text); // its number; the empty text has 0
    std::string_view Text(TextNumber number) const
    {
        const std::uint32_t begin = number == 0 ? 0 : ends[number - 1];
        return std::string_view(bytes).substr(begin, ends[number] - begin);
    }
    size_t Count() const { return ends.size(); }
    const std::string& Bytes() const { return bytes; }
    const std::vector<std::uint32_t>& Ends() const { return ends; }
    size_t Memory() const { return bytes.capacity() + (ends.capacity() + slots.capacity()) * sizeof(ends[0]); }

private:
    void Grow();
    size_t SlotOf(std::string_view text) const; // with its number, or the free one where it belongs

    std::string bytes;
    std::vector<std::uint32_t> ends;
    std::vector<TextNumber> slots; // an open hash table of numbers plus 1; 0: free
};

} // namespace symbols
