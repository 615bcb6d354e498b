// Bookmarks of a text that is closed, and the lines that they mean when it is opened again.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct KeptBookmark {
    long line = 0;    // from 0
    std::string sign; // a number made from the line's text, so that no text is kept; "" for a blank line

    bool operator==(const KeptBookmark&) const = default;
};

std::vector<KeptBookmark> BookmarksIn(std::string_view text, const std::vector<long>& lines);

// The lines as the text is now, in order. Each is the nearest one with the same words, in any indentation, and moves as
// far as the bookmark before it did. Where no near line has the words, the number counts; one that the text no longer
// has is left out.
std::vector<long> LinesOf(const std::vector<KeptBookmark>& bookmarks, std::string_view text);

} // namespace wren
