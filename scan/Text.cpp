#include "scan/Text.h"

#include <algorithm>

namespace scan {

std::string StringText::Range(long start, long end) const
{
    std::string range;
    range.reserve(Index(end - start));
    for (long offset = start; offset < end; ++offset)
        range += At(offset);
    return range;
}

long StringText::LineAt(long offset) const
{
    const std::string_view before = text.substr(0, Index(std::clamp(offset, 0L, Length())));
    return std::count(before.begin(), before.end(), '\n');
}

bool IsScannable(const Text& text, long selStart, long selEnd)
{
    constexpr long kLongestSelection = 1024;
    return text.LineAt(selStart) == text.LineAt(selEnd) && selEnd - selStart <= kLongestSelection;
}

} // namespace scan
