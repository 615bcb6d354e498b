// Where the lines of a text begin, computed only as far as needed.
#pragma once

#include <string_view>
#include <vector>

namespace wren {

// A big text is read once, from its beginning to the farthest offset asked for. After an edit, only the text behind it
// is read again. Lines count from 0, and only "\n" ends one. Not thread-safe.
class LineIndex {
public:
    // Offsets are within the text. 'text' is unchanged since the last call, except for changes that TextChanged()
    // announced.
    long LineAt(std::string_view text, long offset);
    long LineStart(std::string_view text, long line); // the text's length when there is no such line

    void TextChanged(long offset); // at 'offset' or behind it

    long BytesRead() const { return bytesRead; } // in total, by all calls

private:
    void ReadOn(std::string_view text);

    std::vector<long> starts; // of line 1, 2, ... among the first 'known' bytes
    long known = 0;
    long bytesRead = 0;
};

} // namespace wren
