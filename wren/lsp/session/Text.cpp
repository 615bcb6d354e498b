#include "wren/lsp/session/Text.h"

#include "base/Utf8.h"

#include <algorithm>
#include <utility>

namespace wren::lsp {

namespace {

unsigned UnitsOf(std::string_view character, Encoding encoding)
{
    if (base::IsStray(character))
        return 1;
    if (encoding == Encoding::Utf8)
        return static_cast<unsigned>(character.size());
    return character.size() == 4 ? 2 : 1; // beyond U+FFFF: a pair of surrogates
}

size_t LineOf(const std::vector<size_t>& starts, size_t offset)
{
    return static_cast<size_t>(std::upper_bound(starts.begin(), starts.end(), offset) - starts.begin()) - 1;
}

} // namespace

Text::Text(std::string given) : content(std::move(given)), starts{0}
{
    bool same = true;
    for (size_t at = content.find_first_of("\r\n"); at != std::string::npos; at = content.find_first_of("\r\n", at)) {
        const bool isFeed = content[at] == '\n';
        const bool isPair = !isFeed && at + 1 < content.size() && content[at + 1] == '\n';
        same = same && (isFeed || isPair);
        at += isPair ? 2 : 1;
        starts.push_back(at);
    }
    if (same)
        return;
    sourceStarts.push_back(0);
    for (size_t at = content.find('\n'); at != std::string::npos; at = content.find('\n', at + 1))
        sourceStarts.push_back(at + 1);
}

size_t Text::LineStart(size_t line) const
{
    return line < starts.size() ? starts[line] : content.size();
}

std::string_view Text::Line(size_t line) const
{
    if (line >= starts.size())
        return "";
    std::string_view text = std::string_view(content).substr(starts[line], LineStart(line + 1) - starts[line]);
    return text.substr(0, std::min(text.find_first_of("\r\n"), text.size()));
}

size_t Text::LineAt(size_t offset) const
{
    return LineOf(starts, std::min(offset, content.size()));
}

size_t Text::OffsetOf(Position position, Encoding encoding) const
{
    if (position.line >= starts.size())
        return content.size();
    std::string_view rest = Line(position.line);
    const size_t end = starts[position.line] + rest.size();
    for (unsigned units = 0; !rest.empty();) {
        const std::string_view character = base::FirstCharacter(rest);
        units += UnitsOf(character, encoding);
        if (units > position.character)
            break;
        rest.remove_prefix(character.size());
    }
    return end - rest.size();
}

Position Text::PositionOf(size_t offset, Encoding encoding) const
{
    offset = std::min(offset, content.size());
    Position position{static_cast<unsigned>(LineAt(offset)), 0};
    const size_t start = starts[position.line];
    std::string_view before = Line(position.line);
    before = before.substr(0, std::min(offset - start, before.size()));
    while (!before.empty()) {
        const std::string_view character = base::FirstCharacter(before);
        position.character += UnitsOf(character, encoding);
        before.remove_prefix(character.size());
    }
    return position;
}

lsp::Range Text::RangeOf(size_t start, size_t end, Encoding encoding) const
{
    return {PositionOf(start, encoding), PositionOf(end, encoding)};
}

unsigned Text::SourceLineAt(size_t offset) const
{
    return static_cast<unsigned>(LineOf(sourceStarts.empty() ? starts : sourceStarts, offset)) + 1;
}

size_t Text::SourceLineStart(unsigned line) const
{
    const std::vector<size_t>& all = sourceStarts.empty() ? starts : sourceStarts;
    return line > 0 && line <= all.size() ? all[line - 1] : content.size();
}

std::string_view Text::SourceLine(unsigned line) const
{
    const size_t start = SourceLineStart(line);
    const std::string_view rest = std::string_view(content).substr(start);
    const std::string_view text = rest.substr(0, std::min(rest.find('\n'), rest.size()));
    return text.ends_with('\r') ? text.substr(0, text.size() - 1) : text;
}

} // namespace wren::lsp
