// What the keys of a new segment lead to.
#pragma once

#include "symbols/store/Format.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace symbols {

// All lists of all keys, in little memory: everything is counted before it is put. Values of one list must come in
// rising order; repeated ones count once. Not thread-safe.
class KeyLists {
public:
    explicit KeyLists(size_t texts); // how many numbers of texts there are

    void Count(KeyList list, TextNumber key) { At(list).ends[key]++; }
    bool IsCounted(TextNumber key) const; // in any list; before StartPutting()
    void StartPutting();
    void Put(KeyList list, TextNumber key, std::uint32_t value)
    {
        Table& table = At(list);
        table.values[table.ends[key]++] = value;
    }

    // After all of them.
    bool Has(KeyList list, TextNumber key) const { return Begin(list, key) != At(list).ends[key]; }
    void Append(TextNumber key, std::string& out) const; // as in Section::Postings

private:
    struct Table {
        std::vector<std::uint32_t> ends; // in 'values', for each text
        std::vector<std::uint32_t> values;
    };
    Table& At(KeyList list) { return tables[static_cast<size_t>(list)]; }
    const Table& At(KeyList list) const { return tables[static_cast<size_t>(list)]; }
    std::uint32_t Begin(KeyList list, TextNumber key) const { return key == 0 ? 0 : At(list).ends[key - 1]; }

    std::array<Table, kKeyLists> tables;
};

} // namespace symbols
