#include "symbols/store/KeyLists.h"

#include "symbols/store/Varint.h"

#include <algorithm>

namespace symbols {

KeyLists::KeyLists(size_t texts)
{
    for (Table& table : tables)
        table.ends.resize(texts);
}

bool KeyLists::IsCounted(TextNumber key) const
{
    return std::ranges::any_of(tables, [key](const Table& table) { return table.ends[key] > 0; });
}

// Each count becomes the place where the list begins; putting moves that to its end.
void KeyLists::StartPutting()
{
    for (Table& table : tables) {
        std::uint32_t next = 0;
        for (std::uint32_t& end : table.ends) {
            const std::uint32_t count = end;
            end = next;
            next += count;
        }
        table.values.resize(next);
    }
}

void KeyLists::Append(TextNumber key, std::string& out) const
{
    unsigned present = 0;
    for (size_t i = 0; i < kKeyLists; i++)
        present |= unsigned(Has(static_cast<KeyList>(i), key)) << i;
    out.push_back(static_cast<char>(present));
    std::string values;
    for (size_t i = 0; i < kKeyLists; i++) {
        if ((present >> i & 1) == 0)
            continue;
        const std::uint32_t begin = Begin(static_cast<KeyList>(i), key);
        values.clear();
        for (std::uint32_t at = begin; at < tables[i].ends[key]; at++)
            if (const std::uint32_t last = at == begin ? 0 : tables[i].values[at - 1];
                at == begin || tables[i].values[at] != last)
                PutVarint(values, tables[i].values[at] - last);
        PutVarint(out, values.size());
        out += values;
    }
}

} // namespace symbols
