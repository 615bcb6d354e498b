// How much a tags file holds.
#pragma once

#include <string>

namespace wren {

struct TagsCount {
    long files = 0; // whose tags were looked for; those with tags, when the program that made the file does not tell
    long tags = 0;
};

TagsCount CountTags(const std::string& file);

} // namespace wren
