// Reads whole sources, one after the other.
#pragma once

#include "tagging/FileStamp.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tagging {

// One for each thread.
class FileReader {
public:
    // False if it is not a plain file, is larger than any real source, or cannot be opened.
    bool Read(const std::string& path);

    std::string_view Text() const { return text; }       // until the next Read()
    const FileStamp& Stamp() const { return stamp; }     // of the file before it was read
    bool HasChanged() const { return changedMeanwhile; } // while it was read

    // The buffer that contains Text(), which stays where it is. The next file gets another.
    std::unique_ptr<char[]> TakeBuffer();

private:
    std::unique_ptr<char[]> buffer; // of the last file; a new one would be cleared each time
    size_t capacity = 0;
    std::string_view text;
    FileStamp stamp;
    bool changedMeanwhile = false;
};

} // namespace tagging
