// How a chosen completion takes the place of what has been typed of it.
#pragma once

#include <optional>
#include <string>

namespace scan {

class Text;

// [start, end) of the text becomes 'text', and the caret goes to 'caret'.
struct Edit {
    long start;
    long end;
    std::string text;
    long caret;
};

// Of a C++ name the last component is replaced; of a selector the missing rest is inserted, with a blank behind each
// inner colon and the caret at the first argument. None when there is no pattern at 'caret'.
std::optional<Edit> CompletionEdit(const Text& text, long caret, const std::string& completion);

} // namespace scan
