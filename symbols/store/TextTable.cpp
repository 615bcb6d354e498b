#include "symbols/store/TextTable.h"

#include <algorithm>
#include <functional>

namespace symbols {

std::uint32_t TextTable::HashOf(std::string_view text)
{
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

TextNumber TextTable::Put(std::string_view text, std::uint32_t hash)
{
    if (ends.size() * 3 >= slots.size() * 2)
        Grow();
    const size_t mask = slots.size() - 1;
    size_t place = hash & mask;
    for (; slots[place].number != 0; place = (place + 1) & mask)
        if (slots[place].hash == hash && Text(slots[place].number) == text)
            return slots[place].number;
    const auto number = static_cast<TextNumber>(ends.size());
    slots[place] = {number, hash};
    bytes += text;
    ends.push_back(static_cast<std::uint32_t>(bytes.size()));
    return number;
}

// The table of a large index is in no cache of the processor. Waiting for one text at a time took most of the time.
void TextTable::Put(std::span<const std::string_view> texts, std::vector<TextNumber>& numbers)
{
    constexpr size_t kSlotsAhead = 12;
    constexpr size_t kTextsAhead = 6;
    hashes.clear();
    for (const std::string_view text : texts)
        hashes.push_back(text.empty() ? 0 : HashOf(text));
    for (size_t i = 0; i < texts.size() + kSlotsAhead; i++) {
        if (!slots.empty() && i < texts.size())
            __builtin_prefetch(&slots[hashes[i] & (slots.size() - 1)]);
        if (!slots.empty() && i >= kTextsAhead && i - kTextsAhead < texts.size())
            __builtin_prefetch(&ends[slots[hashes[i - kTextsAhead] & (slots.size() - 1)].number]);
        if (i < kSlotsAhead)
            continue;
        const std::string_view text = texts[i - kSlotsAhead];
        numbers.push_back(text.empty() ? 0 : Put(text, hashes[i - kSlotsAhead]));
    }
}

void TextTable::Grow()
{
    std::vector<Slot> old(std::max<size_t>(256, slots.size() * 2));
    old.swap(slots);
    const size_t mask = slots.size() - 1;
    for (const Slot& slot : old) {
        if (slot.number == 0)
            continue;
        size_t place = slot.hash & mask;
        while (slots[place].number != 0)
            place = (place + 1) & mask;
        slots[place] = slot;
    }
}

} // namespace symbols
