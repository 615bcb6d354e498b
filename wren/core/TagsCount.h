// The number of files and tags in a tags file.
#pragma once

#include <string>

namespace wren {

struct TagsCount {
    long files = 0; // that were parsed; only those with tags when the file does not record the number
    long tags = 0;
};

TagsCount CountTags(const std::string& file);

} // namespace wren
