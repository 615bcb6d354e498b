// What takes the place of matches.
#pragma once

#include "wren/search/FilesSearch.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct Replacement { // bytes
    size_t start = 0;
    size_t size = 0;
    std::string with;
};

// The matches of one file, each with its replacement, and which text they were found in.
struct FileReplacements {
    std::string root;  // the absolute directory that was searched
    std::string path;  // absolute
    std::string shown; // relative to the root
    size_t textSize = 0;
    std::uint64_t textHash = 0;
    std::vector<FoundLine> lines;
};

// The text with the replacements made, which are in order, apart from each other and within it.
std::string WithReplacements(std::string_view text, const std::vector<Replacement>& replacements);

// Whether this is the text that the matches were found in.
bool IsTextOf(const FileReplacements& found, std::string_view text);

// The line after the replacement of one match in it; for lists.
std::string SourceAfter(const FoundLine& line);

} // namespace wren
