// Sorting very many strings, as long as it takes or until reading is cancelled.
#pragma once

#include "vetch/support/Cancellation.h"

#include <algorithm>
#include <new>
#include <vector>

// Sorts the pointers; false when reading was cancelled meanwhile, which leaves them as they were. It takes as much
// memory again as the pointers themselves do, if that is there; otherwise they are sorted where they are, to the end.
template <class Less>
bool SortUnlessCancelled(std::vector<char*>& strings, Less less)
{
    struct Cancelled {};
    const auto lessOrThrow = [less](const char* a, const char* b) {
        return vetch::ReadingIsCancelled() ? throw Cancelled() : less(a, b);
    };
    try {
        std::vector<char*> sorted = strings; // a sort that is left half-way loses some
        std::sort(sorted.begin(), sorted.end(), lessOrThrow);
        strings.swap(sorted);
    } catch (const Cancelled&) {
        return false;
    } catch (const std::bad_alloc&) {
        std::sort(strings.begin(), strings.end(), less);
    }
    return true;
}
