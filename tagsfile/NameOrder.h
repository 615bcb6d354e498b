// Finds out whether the names in a tags file are in the order of their bytes, while its lines are read.
#pragma once

#include "tagsfile/FirstStop.h"

#include <algorithm>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// What a line is found by: all of it up to its first tab, or up to its end. The names of a file are in order when those
// of no two lines are the wrong way round as unsigned bytes; then so is whatever number of bytes they begin with, and
// all names with the same beginning stand together. A NUL byte is a byte like any other.
inline std::string_view NameInLine(std::string_view line)
{
    const size_t end = line.find('\t');
    if (end != std::string_view::npos)
        return line.substr(0, end);
    return line.ends_with('\n') ? line.substr(0, line.length() - 1) : line;
}

// Sees all lines of a file from its beginning, in the pieces that LineReader gives. Pseudo-tags at the head are no part
// of the order, for they may stand in any; further down they are.
//
// Some files are never in order, since readers would see other lines when they begin elsewhere: those with a line of
// more than one piece, and those with a line that begins with a tab, which readers pass over to find the name.
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

    // Whether nothing would come of Add() for these, which are whole lines: for nearly all of them in a file that is in
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

    // Whether a few glances tell that the second line's name is not before the first one's: nearly always in a sorted
    // file. It is so when the first name ends before anything differs, and when the first byte that differs is larger,
    // and is no tab or line break: these end a name, and so put it in front of one that goes on with any byte at all.
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
