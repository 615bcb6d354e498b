// Columns of places in a text.
#pragma once

#include <cstddef>
#include <string_view>

namespace resolve {

// Counts from the place before: generated lines have thousands of uses. Borrows the text.
class Columns {
public:
    explicit Columns(std::string_view text) : text(text) {}

    // In bytes, from 1. Quick for offsets that ascend, right for any.
    unsigned At(size_t offset)
    {
        const size_t from = offset < passed ? 0 : passed;
        const size_t feed = text.substr(from, offset - from).rfind('\n');
        if (feed != std::string_view::npos)
            lineStart = from + feed + 1;
        else if (from == 0)
            lineStart = 0;
        passed = offset;
        return static_cast<unsigned>(offset - lineStart + 1);
    }

private:
    const std::string_view text;
    size_t passed = 0;    // by At()
    size_t lineStart = 0; // of the line there
};

} // namespace resolve
