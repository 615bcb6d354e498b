// Sorts very many strings, to the end or until reading is cancelled.
#pragma once

#include "vetch/support/Cancellation.h"

#include <algorithm>
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
