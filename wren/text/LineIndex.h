// Where the lines of a text begin, found out only as far as somebody has asked.
#pragma once

#include <string_view>
#include <vector>

namespace wren {

// A big text is read once, from its beginning to the farthest offset asked for; an edit costs reading again only what
// lies behind it. Lines count from 0, and only "\n" ends one. Not thread-safe.
class LineIndex {
public:
    // Offsets are within the text; 'text' is what it was at the last call, but for announced changes.
    long LineAt(std::string_view text, long offset);
    long LineStart(std::string_view text, long line); // the text's length when there is no such line

    void TextChanged(long offset); // at or behind it

    long BytesRead() const { return bytesRead; } // since it was made: what all answers together have cost

private:
    void ReadOn(std::string_view text);

    std::vector<long> starts; // of line 1, 2, ... among the first 'known' bytes
    long known = 0;
    long bytesRead = 0;
};

} // namespace wren
