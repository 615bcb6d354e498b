#include "symbols/PatternLines.h"

#include <algorithm>

namespace symbols {

std::string PlainPattern(std::string_view address)
{
    std::string plain;
    for (size_t i = 1; i + 1 < address.size(); i++) {
        if (address[i] == '\\' && i + 2 < address.size())
            ++i;
        plain += address[i];
    }
    return plain;
}

PatternLines::PatternLines(std::string_view text)
{
    for (unsigned number = 1; !text.empty(); number++) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        firstLines.try_emplace(line, number);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

// Patterns begin with "^"; those of long lines have no "$" at the end.
unsigned PatternLines::LineOf(std::string_view pattern) const
{
    if (pattern.starts_with('^'))
        pattern.remove_prefix(1);
    if (pattern.ends_with('$')) {
        const auto found = firstLines.find(pattern.substr(0, pattern.size() - 1));
        return found == firstLines.end() ? 1 : found->second;
    }
    const auto found = std::ranges::find_if(lines, [&](std::string_view line) { return line.starts_with(pattern); });
    return found == lines.end() ? 1 : static_cast<unsigned>(found - lines.begin() + 1);
}

} // namespace symbols
