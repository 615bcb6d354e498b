// Sorts very many strings, to the end or until reading is cancelled, and drops duplicates.
#pragma once

#include "vetch/support/Cancellation.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <new>
#include <vector>

// Sorts the pointers; when reading is cancelled, returns false and leaves them unchanged. Needs a copy of the pointers;
// without memory for it, sorts in place, to the end.
template <class Less>
bool SortUnlessCancelled(std::vector<char*>& strings, Less less)
{
    struct Cancelled {};
    const auto lessOrThrow = [less](const char* a, const char* b) {
        return vetch::ReadingIsCancelled() ? throw Cancelled() : less(a, b);
    };
    try {
        std::vector<char*> sorted = strings; // an interrupted sort loses some
        std::sort(sorted.begin(), sorted.end(), lessOrThrow);
        strings.swap(sorted);
    } catch (const Cancelled&) {
        return false;
    } catch (const std::bad_alloc&) {
        std::sort(strings.begin(), strings.end(), less);
    }
    return true;
}

// Like std::unique, for ranges that own their elements. Moves the first of each run of equal elements to the front of a
// range of malloc-ed pointers, and returns the end of these. Behind it are nulls and duplicates that are not freed yet:
// free() them all, then erase them.
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
