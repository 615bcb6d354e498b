#include "wren/text/LineIndex.h"

#include <algorithm>
#include <cstring>

namespace wren {

namespace {

constexpr long kChunk = 64 * 1024;

} // namespace

long LineIndex::LineAt(std::string_view text, long offset)
{
    while (known < offset)
        ReadOn(text);
    return std::upper_bound(starts.begin(), starts.end(), offset) - starts.begin();
}

long LineIndex::LineStart(std::string_view text, long line)
{
    if (line <= 0)
        return 0;
    const long length = static_cast<long>(text.size());
    while (static_cast<long>(starts.size()) < line && known < length)
        ReadOn(text);
    return static_cast<long>(starts.size()) < line ? length : starts[line - 1];
}

void LineIndex::TextChanged(long offset)
{
    known = std::min(known, offset);
    while (!starts.empty() && starts.back() > known)
        starts.pop_back();
}

void LineIndex::ReadOn(std::string_view text)
{
    const long end = std::min(known + kChunk, static_cast<long>(text.size()));
    bytesRead += end - known;
    while (known < end) {
        const void* found = std::memchr(text.data() + known, '\n', end - known);
        if (found == nullptr)
            break;
        known = static_cast<const char*>(found) - text.data() + 1;
        starts.push_back(known);
    }
    known = end;
}

} // namespace wren
