// The edit that replaces a typed beginning with the chosen completion.
#pragma once

#include <optional>
#include <string>

namespace scan {

class Text;

// 'text' replaces [start, end), and the caret moves to 'caret'.
struct Edit {
    long start;
    long end;
    std::string text;
    long caret;
};

// For a C++ name, replaces the last component. For a selector, inserts the missing rest, with a blank behind each inner
// colon and the caret at the first argument. None when there is no pattern at 'caret'.
std::optional<Edit> CompletionEdit(const Text& text, long caret, const std::string& completion);

} // namespace scan
