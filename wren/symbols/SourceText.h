// A text and its lines, as the index counts them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

// Lines count from 1 and end with "\n" or "\r\n"; a lone "\r" does not end one. Borrows the text and the starts of its
// lines.
class SourceText {
public:
    SourceText(std::string_view content, const std::vector<size_t>& starts) : content(content), starts(&starts) {}

    std::string_view Content() const { return content; }
    unsigned LineAt(size_t offset) const;
    size_t LineStart(unsigned line) const;      // bytes; the text's end when there is no such line
    std::string_view Line(unsigned line) const; // without its break; "" when there is no such line

private:
    std::string_view content;
    const std::vector<size_t>* starts;
};

std::vector<size_t> SourceLineStarts(std::string_view content); // at least one

// A text that nobody else keeps. Immutable.
class KeptSource {
public:
    explicit KeptSource(std::string text);
    KeptSource(const KeptSource&) = delete;
    KeptSource& operator=(const KeptSource&) = delete;

    SourceText Source() const { return {content, starts}; }

private:
    const std::string content;
    const std::vector<size_t> starts;
};

} // namespace wren
