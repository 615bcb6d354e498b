// Where the patterns of tags fit.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace symbols {

// Of the address "/^int a;$/": the text between the delimiters, without the escapes in front of them and of
// backslashes.
std::string PlainPattern(std::string_view address);

// The lines of a text, which must outlive this.
class PatternLines {
public:
    explicit PatternLines(std::string_view text);

    // The number of the first line that fits the plain pattern, counted from 1; 1 when none does.
    unsigned LineOf(std::string_view pattern) const;

private:
    std::unordered_map<std::string_view, unsigned> firstLines;
    std::vector<std::string_view> lines;
};

} // namespace symbols
