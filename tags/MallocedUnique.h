// std::unique for ranges that own their elements.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <iterator>

// Moves the first of each run of equal elements to the front of a range of malloc-ed pointers, and returns the end of
// these. Behind it are nulls and duplicates that are not freed yet: free() them all, then erase them.
template <class Iterator, class Equal>
Iterator malloced_unique(Iterator first, Iterator last, Equal equal)
{
    Iterator kept = std::adjacent_find(first, last, equal);
    if (kept == last)
        return last;
    Iterator slot = std::next(kept);
    for (Iterator x = std::next(slot); x != last; ++x) {
        if (equal(*kept, *x))
            continue;
        std::free(*slot); // a skipped duplicate, or null
        *slot = *x;
        *x = nullptr;
        kept = slot++;
    }
    return slot;
}
