#include "symbols/store/TextTable.h"

#include <functional>

namespace symbols {

TextNumber TextTable::Put(std::string_view text)
{
    if ((ends.size() + 1) * 3 > slots.size() * 2)
        Grow();
    TextNumber& slot = slots[SlotOf(text)];
    if (slot != 0)
        return slot - 1;
    bytes += text;
    ends.push_back(static_cast<std::uint32_t>(bytes.size()));
    slot = static_cast<TextNumber>(ends.size());
    return slot - 1;
}

size_t TextTable::SlotOf(std::string_view text) const
{
    const size_t mask = slots.size() - 1;
    size_t slot = std::hash<std::string_view>()(text) & mask;
    while (slots[slot] != 0 && Text(slots[slot] - 1) != text)
        slot = (slot + 1) & mask;
    return slot;
}

void TextTable::Grow()
{
    slots.assign(slots.empty() ? 256 : slots.size() * 2, 0);
    for (TextNumber number = 0; number < ends.size(); number++)
        slots[SlotOf(Text(number))] = number + 1;
}

} // namespace symbols
