// Texts, each once, by number.
#pragma once

#include "symbols/store/Format.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// Not thread-safe.
class TextTable {
public:
    TextTable() { ends.push_back(0); }

    TextNumber Put(std::string_view text) { return text.empty() ? 0 : Put(text, HashOf(text)); } // the empty text has 0
    // Appends the number of each text. Faster than one after the other: what is needed is fetched in advance.
    void Put(std::span<const std::string_view> texts, std::vector<TextNumber>& numbers);

    std::string_view Text(TextNumber number) const
    {
        const std::uint32_t begin = number == 0 ? 0 : ends[number - 1];
        return std::string_view(bytes).substr(begin, ends[number] - begin);
    }

    // Calls take(text) for each of 'count' texts; numberOf(i) is the number of one. What is needed is fetched early.
    template <class NumberOf, class Take>
    void ForEach(size_t count, const NumberOf& numberOf, const Take& take) const
    {
        constexpr size_t kAhead = 8;
        for (size_t i = 0; i < count; i++) {
            if (i + 2 * kAhead < count)
                __builtin_prefetch(&ends[numberOf(i + 2 * kAhead)]);
            if (i + kAhead < count)
                __builtin_prefetch(Text(numberOf(i + kAhead)).data());
            take(Text(numberOf(i)));
        }
    }

    size_t Count() const { return ends.size(); }
    const std::string& Bytes() const { return bytes; }
    const std::vector<std::uint32_t>& Ends() const { return ends; }
    size_t Memory() const
    {
        return bytes.capacity() + ends.capacity() * sizeof(ends[0]) + slots.capacity() * sizeof(slots[0]);
    }

private:
    struct Slot {
        TextNumber number = 0; // 0: free
        std::uint32_t hash = 0;
    };

    static std::uint32_t HashOf(std::string_view text);
    TextNumber Put(std::string_view text, std::uint32_t hash);
    void Grow();

    std::string bytes;
    std::vector<std::uint32_t> ends;
    std::vector<Slot> slots;           // an open hash table; as many as a power of two
    std::vector<std::uint32_t> hashes; // of many texts that are being put
};

} // namespace symbols
