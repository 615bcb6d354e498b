#include "symbols/store/KeyLists.h"

#include "symbols/store/Varint.h"

namespace symbols {

void KeyListTable::Gather(size_t texts)
{
    begins.assign(texts + 1, 0);
    for (const Pair& pair : pairs)
        begins[pair.key + 1]++;
    for (size_t i = 1; i <= texts; i++)
        begins[i] += begins[i - 1];
    values.resize(pairs.size());
    std::vector<std::uint32_t> next(begins.begin(), begins.end() - 1);
    for (const Pair& pair : pairs)
        values[next[pair.key]++] = pair.value;
    pairs = {};
}

void KeyListTable::Append(TextNumber key, std::string& out) const
{
    thread_local std::string list;
    list.clear();
    std::uint32_t last = 0;
    for (std::uint32_t i = begins[key]; i < begins[key + 1]; i++) {
        if (i != begins[key] && values[i] == last)
            continue;
        PutVarint(list, values[i] - last);
        last = values[i];
    }
    PutVarint(out, list.size());
    out += list;
}

} // namespace symbols
