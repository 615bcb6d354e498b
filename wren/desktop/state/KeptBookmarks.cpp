#include "wren/desktop/state/KeptBookmarks.h"

#include "base/Hash.h"

#include <algorithm>
#include <optional>
#include <set>

namespace wren {

namespace {

constexpr long kNear = 500;            // lines, up and down
constexpr size_t kMostOfALine = 400;   // bytes, that make its sign
constexpr const char* kBlanks = " \t"; // around a line's words

// With any of the three line ends, as the view counts lines.
std::vector<std::string_view> LinesIn(std::string_view text)
{
    std::vector<std::string_view> lines;
    for (size_t start = 0;;) {
        const size_t end = text.find_first_of("\r\n", start);
        lines.push_back(text.substr(start, end - start));
        if (end == std::string_view::npos)
            return lines;
        start = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
    }
}

std::string SignOf(std::string_view line)
{
    line = line.substr(std::min(line.find_first_not_of(kBlanks), line.size()));
    line = line.substr(0, line.find_last_not_of(kBlanks) + 1);
    return line.empty() ? "" : base::Fnv1aDigits(std::string(line.substr(0, kMostOfALine)));
}

std::optional<long> Nearest(const std::vector<std::string_view>& lines, long expected, const std::string& sign)
{
    const long count = static_cast<long>(lines.size());
    for (long away = 0; away <= kNear; ++away)
        for (const long line : {expected + away, expected - away})
            if (line >= 0 && line < count && SignOf(lines[static_cast<size_t>(line)]) == sign)
                return line;
    return std::nullopt;
}

} // namespace

std::vector<KeptBookmark> BookmarksIn(std::string_view text, const std::vector<long>& lines)
{
    if (lines.empty())
        return {};
    const std::vector<std::string_view> all = LinesIn(text);
    std::vector<KeptBookmark> kept;
    for (const long line : lines)
        if (line >= 0 && line < static_cast<long>(all.size()))
            kept.push_back({line, SignOf(all[static_cast<size_t>(line)])});
    return kept;
}

std::vector<long> LinesOf(const std::vector<KeptBookmark>& bookmarks, std::string_view text)
{
    const std::vector<std::string_view> all = LinesIn(text);
    std::set<long> lines;
    long moved = 0;
    for (const KeptBookmark& bookmark : bookmarks) {
        const long expected = bookmark.line + moved;
        const std::optional<long> found = bookmark.sign.empty() ? std::nullopt : Nearest(all, expected, bookmark.sign);
        moved = found.value_or(expected) - bookmark.line;
        if (const long line = bookmark.line + moved; line >= 0 && line < static_cast<long>(all.size()))
            lines.insert(line);
    }
    return {lines.begin(), lines.end()};
}

} // namespace wren
