#include "wren/symbols/SourceLines.h"

#include "base/Utf8.h"

namespace wren {

namespace {

std::string_view WithoutLineBreak(std::string_view line)
{
    line = line.substr(0, line.find('\n'));
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

std::string_view Shortened(std::string_view line)
{
    size_t length = std::min(line.size(), SourceLines::kMost);
    while (length < line.size() && length > 0 && base::ContinuesCharacter(line[length]))
        --length;
    return line.substr(0, length);
}

} // namespace

std::string_view SourceLines::Line(const std::string& wanted, unsigned line)
{
    if (!text || wanted != path) {
        path = wanted;
        text = read(path).value_or("");
        index = LineIndex();
    }
    if (line == 0)
        return {};
    const long start = index.LineStart(*text, static_cast<long>(line) - 1);
    return Shortened(WithoutLineBreak(std::string_view(*text).substr(static_cast<size_t>(start))));
}

} // namespace wren
