#include "wren/symbols/SourceText.h"

#include <algorithm>
#include <utility>

namespace wren {

unsigned SourceText::LineAt(size_t offset) const
{
    return static_cast<unsigned>(std::upper_bound(starts->begin(), starts->end(), offset) - starts->begin());
}

size_t SourceText::LineStart(unsigned line) const
{
    return line > 0 && line <= starts->size() ? (*starts)[line - 1] : content.size();
}

std::string_view SourceText::Line(unsigned line) const
{
    const std::string_view rest = content.substr(LineStart(line));
    const std::string_view text = rest.substr(0, std::min(rest.find('\n'), rest.size()));
    return text.ends_with('\r') ? text.substr(0, text.size() - 1) : text;
}

std::vector<size_t> SourceLineStarts(std::string_view content)
{
    std::vector<size_t> starts{0};
    for (size_t at = content.find('\n'); at != std::string_view::npos; at = content.find('\n', at + 1))
        starts.push_back(at + 1);
    return starts;
}

KeptSource::KeptSource(std::string text) : content(std::move(text)), starts(SourceLineStarts(content)) {}

} // namespace wren
