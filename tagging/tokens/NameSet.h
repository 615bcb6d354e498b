// The distinct words of a text.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace tagging {

// Remembers each word once. Made for speed: a word that is known costs one look in most cases. Words are borrowed.
class NameSet {
public:
    NameSet() : slots(kFewest), size(kFewest) {}

    // False if the word is known. Words of any length but 0.
    bool Add(std::string_view word)
    {
        const std::uint32_t hash = HashOf(word);
        for (size_t at = hash & (size - 1);; at = (at + 1) & (size - 1)) {
            Slot& slot = slots[at];
            if (slot.text == nullptr) {
                slot = {word.data(), static_cast<std::uint32_t>(word.size()), hash};
                if (++count * 2 > size)
                    Grow();
                return true;
            }
            if (slot.hash == hash && std::string_view(slot.text, slot.length) == word)
                return false;
        }
    }

    // Forgets all words, but keeps the room for as many. A small part of it is used next, or each text after a large
    // one would pay for clearing all of it.
    void Clear()
    {
        if (count > 0)
            std::memset(static_cast<void*>(slots.data()), 0, size * sizeof(Slot));
        size = kFewest;
        count = 0;
    }

private:
    static constexpr size_t kFewest = 1024;

    struct Slot {
        const char* text;
        std::uint32_t length;
        std::uint32_t hash;
    };

    template <class Number>
    static std::uint64_t Load(const char* from)
    {
        Number number;
        std::memcpy(&number, from, sizeof number);
        return number;
    }

    static std::uint64_t Mixed(std::uint64_t a, std::uint64_t b)
    {
        return std::rotl((a ^ b) * 0x9E3779B97F4A7C15u, 29) ^ b;
    }

    static std::uint32_t HashOf(std::string_view word)
    {
        const char* const text = word.data();
        const size_t length = word.size();
        std::uint64_t hash = length;
        if (length >= 8) {
            for (size_t at = 0; at + 8 < length; at += 8)
                hash = Mixed(hash, Load<std::uint64_t>(text + at));
            hash = Mixed(hash, Load<std::uint64_t>(text + length - 8));
        } else if (length >= 4) {
            hash = Mixed(hash, Load<std::uint32_t>(text) << 32 | Load<std::uint32_t>(text + length - 4));
        } else {
            hash = Mixed(hash, static_cast<std::uint64_t>(static_cast<unsigned char>(text[0])) << 16 |
                                   static_cast<std::uint64_t>(static_cast<unsigned char>(text[length / 2])) << 8 |
                                   static_cast<unsigned char>(text[length - 1]));
        }
        return static_cast<std::uint32_t>((hash * 0x9E3779B97F4A7C15u) >> 32);
    }

    void Grow()
    {
        old.assign(slots.begin(), slots.begin() + static_cast<std::ptrdiff_t>(size));
        std::memset(static_cast<void*>(slots.data()), 0, size * sizeof(Slot));
        size *= 2;
        if (size > slots.size())
            slots.resize(size);
        for (const Slot& slot : old)
            if (slot.text != nullptr)
                Place(slot);
    }

    void Place(const Slot& slot)
    {
        size_t at = slot.hash & (size - 1);
        while (slots[at].text != nullptr)
            at = (at + 1) & (size - 1);
        slots[at] = slot;
    }

    std::vector<Slot> slots; // free ones have no text
    std::vector<Slot> old;   // while it grows
    size_t size;             // how many are used, a power of two
    size_t count = 0;
};

} // namespace tagging
