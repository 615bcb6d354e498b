#include "wren/text/TextChange.h"

#include <algorithm>

namespace wren {

namespace {

// The offset behind the text's last line break.
size_t WholeLines(std::string_view text)
{
    const size_t end = text.rfind('\n');
    return end == std::string_view::npos ? 0 : end + 1;
}

bool BeginsALine(std::string_view text, size_t offset)
{
    return offset == 0 || text[offset - 1] == '\n';
}

} // namespace

TextChange ChangeBetween(std::string_view before, std::string_view after)
{
    const auto [differs, other] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    if (differs == before.end() && other == after.end())
        return {static_cast<long>(before.size()), 0, 0};
    const size_t start = WholeLines(before.substr(0, static_cast<size_t>(differs - before.begin())));
    before.remove_prefix(start);
    after.remove_prefix(start);
    const auto [last, ignored] = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
    auto kept = static_cast<size_t>(last - before.rbegin());
    if (!BeginsALine(before, before.size() - kept) || !BeginsALine(after, after.size() - kept)) {
        const size_t end = before.find('\n', before.size() - kept);
        kept = end == std::string_view::npos ? 0 : before.size() - end - 1;
    }
    return {static_cast<long>(start), static_cast<long>(before.size() - kept), static_cast<long>(after.size() - kept)};
}

long MovedPlace(long place, const TextChange& change)
{
    if (place <= change.offset)
        return place;
    if (place >= change.offset + change.removed)
        return place + change.inserted - change.removed;
    return std::min(place, change.offset + change.inserted);
}

} // namespace wren
