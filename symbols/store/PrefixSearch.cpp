// Names that begin with some letters.

#include "symbols/store/SortTexts.h"
#include "symbols/store/View.h"

#include <algorithm>

namespace symbols {

// Goes through the names of all parts at once, in order: with a capital in the prefix in the order of bytes, otherwise
// in that of the names in lower case.
class View::PrefixSearch {
public:
    PrefixSearch(const std::vector<Part>& parts, std::string_view prefix)
        : prefix(prefix), caseCounts(std::ranges::any_of(prefix, IsCapital))
    {
        for (const Part& part : parts) {
            const Segment& segment = *part.segment;
            Cursor cursor{&part, caseCounts ? segment.FirstKeyFrom(prefix) : segment.FirstNameFrom(prefix), 0, {}};
            if (Load(&cursor))
                cursors.push_back(cursor);
        }
    }

    // The parts' keys of the next name; empty after the last one.
    std::vector<std::pair<const Part*, std::uint32_t>> Next()
    {
        std::vector<std::pair<const Part*, std::uint32_t>> keys;
        if (cursors.empty())
            return keys;
        const std::string_view name =
            std::ranges::min_element(cursors, [&](const Cursor& a, const Cursor& b) { return IsBefore(a, b); })->name;
        for (Cursor& cursor : cursors) {
            if (cursor.name != name)
                continue;
            keys.emplace_back(cursor.part, cursor.key);
            cursor.place++;
            if (!Load(&cursor))
                cursor.part = nullptr;
        }
        std::erase_if(cursors, [](const Cursor& cursor) { return cursor.part == nullptr; });
        return keys;
    }

private:
    struct Cursor {
        const Part* part;
        std::uint32_t place; // among the segment's keys or names
        std::uint32_t key;
        std::string_view name;
    };

    // False at the end. Not all keys are names of symbols; a damaged one is passed.
    bool Load(Cursor* cursor) const
    {
        const Segment& segment = *cursor->part->segment;
        for (const std::uint32_t end = caseCounts ? segment.KeyCount() : segment.NameCount(); cursor->place < end;
             cursor->place++) {
            const auto key = caseCounts ? cursor->place : segment.KeyOfName(cursor->place);
            const auto name = key ? segment.KeyText(*key) : std::nullopt;
            if (!name)
                continue;
            cursor->key = *key;
            cursor->name = *name;
            if (!Begins(*name))
                return false;
            if (!caseCounts || segment.HasList(*key, KeyList::Symbols))
                return true;
        }
        return false;
    }

    bool Begins(std::string_view name) const
    {
        return caseCounts ? name.starts_with(prefix) : CompareIgnoringCase(name.substr(0, prefix.size()), prefix) == 0;
    }

    bool IsBefore(const Cursor& a, const Cursor& b) const
    {
        const int order = caseCounts ? 0 : CompareIgnoringCase(a.name, b.name);
        return order != 0 ? order < 0 : a.name < b.name;
    }

    std::string_view prefix;
    bool caseCounts;
    std::vector<Cursor> cursors;
};

Symbols View::ByPrefix(std::string_view prefix, Limits limits) const
{
    PrefixSearch search(parts, prefix);
    Hits hits;
    bool cancelled = false;
    const size_t enough = limits.results < SIZE_MAX ? limits.results + 1 : limits.results;
    while (hits.size() < enough && !cancelled) {
        const auto keys = search.Next();
        if (keys.empty())
            break;
        const size_t before = hits.size();
        for (const auto& [part, key] : keys)
            cancelled = cancelled || !Gather(*part, key, KeyList::Symbols, enough - before, limits.cancel, &hits);
        PutInOrder(&hits, before);
        cancelled = cancelled || (limits.cancel != nullptr && limits.cancel->IsCancelled());
    }
    return SymbolsOf(hits, limits, cancelled);
}

} // namespace symbols
