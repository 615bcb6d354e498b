// Finds out whether the names in a tags file are in byte order, while its lines are read.
#pragma once

#include "tagsfile/FirstStop.h"

#include <algorithm>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// The key of a line: everything before its first tab, or the whole line. Names are in order when each is not less than
// the one before, as unsigned bytes. Their prefixes of any length are then in order too, so names with the same
// beginning stand together. A NUL byte is an ordinary byte.
inline std::string_view NameInLine(std::string_view line)
{
    const size_t end = line.find('\t');
    if (end != std::string_view::npos)
        return line.substr(0, end);
    return line.ends_with('\n') ? line.substr(0, line.length() - 1) : line;
}

// Takes all lines of a file from its beginning, in LineReader's pieces. The order does not include the pseudo-tags at
// the head, which may have any order; those further down count.
//
// Files with a line of more than one piece, or with a line that begins with a tab, are never in order: readers skip
// leading tabs to find the name. In both cases they would see other lines when they begin elsewhere.
class NameOrder {
public:
    // The file's next piece, and the one before it.
    void Add(std::string_view previous, std::string_view line)
    {
        if (inHead || !inOrder)
            AddOddLine(previous, line);
        else if (!ShowOrder(previous, line) || previous.back() != '\n')
            AddInBody(previous, line);
    }

    // Whether Add() would change nothing for these complete lines. True for nearly all lines of a file that is in
    // order.
    bool GoesWithoutSaying(std::string_view previous, std::string_view line) const
    {
        return !inHead && (!inOrder || ShowOrder(previous, line));
    }

    bool InOrder() const { return inOrder; }
    off_t HeadSize() const { return headSize; } // bytes of the pseudo-tags at the head

private:
    void AddOddLine(std::string_view previous, std::string_view line)
    {
        if (!inOrder)
            return;
        inHead = line.starts_with('!');
        inOrder = IsWhole(previous) && !line.starts_with('\t');
        if (inHead)
            headSize += static_cast<off_t>(line.length());
    }
    void AddInBody(std::string_view previous, std::string_view line)
    {
        inOrder = IsWhole(previous) && !line.starts_with('\t') && NameInLine(previous) <= NameInLine(line);
    }
    static bool IsWhole(std::string_view previous) { return previous.empty() || previous.ends_with('\n'); }

    // Whether a quick check shows that the second line's name is not before the first one's; it nearly always does in a
    // sorted file. True if the first name ends before any difference. Also true if the first byte that differs is
    // larger and is not a tab or line break: those end a name, which then sorts before any longer one.
    static bool ShowOrder(std::string_view previous, std::string_view line)
    {
        const size_t length = std::min(previous.length(), line.length());
        for (size_t seen = 0; seen + kGlance <= length; seen += kGlance) {
            const size_t stop = FirstStop(previous.data() + seen, line.data() + seen);
            if (stop == kGlance)
                continue;
            const auto before = static_cast<unsigned char>(previous[seen + stop]);
            const auto behind = static_cast<unsigned char>(line[seen + stop]);
            const bool ends = (before == '\t') | (before == '\n');
            return ends | ((before < behind) & (behind > '\n'));
        }
        return false;
    }

    bool inOrder = true;
    bool inHead = true;
    off_t headSize = 0;
};

} // namespace tagsfile
