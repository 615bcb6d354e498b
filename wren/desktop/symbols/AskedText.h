// What a question about a name is asked of.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace wren {

struct AskedText {
    std::string path;                        // absolute, or "" for a text without a file
    std::shared_ptr<const std::string> text; // never null
    size_t offset = 0;                       // of the caret, bytes
};

} // namespace wren
