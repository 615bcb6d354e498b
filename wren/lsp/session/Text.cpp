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

// Appends the starts of the lines that begin in [from, to], apart from one at 'from'. False when a line ends with a
// lone "\r".
bool AddStarts(std::string_view content, size_t from, size_t to, std::vector<size_t>& starts)
{
    bool same = true;
    for (size_t at = content.find_first_of("\r\n", from); at < to; at = content.find_first_of("\r\n", at)) {
        const bool isFeed = content[at] == '\n';
        const bool isPair = !isFeed && at + 1 < content.size() && content[at + 1] == '\n';
        same = same && (isFeed || isPair);
        at += isPair ? 2 : 1;
        starts.push_back(at);
    }
    return same;
}

std::string Replaced(const std::string& text, size_t start, size_t end, std::string_view replacement)
{
    std::string made;
    made.reserve(text.size() - (end - start) + replacement.size());
    return made.append(text, 0, start).append(replacement).append(text, end);
}

} // namespace

unsigned CountUnits(std::string_view text, Encoding encoding)
{
    unsigned units = 0;
    while (!text.empty()) {
        const std::string_view character = base::FirstCharacter(text);
        units += UnitsOf(character, encoding);
        text.remove_prefix(character.size());
    }
    return units;
}

Text::Text(std::string given) : content(std::move(given)), starts{0}
{
    if (!AddStarts(content, 0, content.size(), starts))
        sourceStarts = SourceLineStarts(content);
}

// Lines before the changed ones begin where they did, those behind it are moved. Around the change, a "\r" and a "\n"
// may have come together or apart, so one line more is looked at on either side.
Text::Text(const Text& before, size_t start, size_t end, std::string_view replacement)
    : content(Replaced(before.content, start, end, replacement))
{
    const size_t first = LineOf(before.starts, start);
    const size_t kept = first > 0 ? first - 1 : 0;
    const size_t next = std::min(LineOf(before.starts, end) + 2, before.starts.size());
    const size_t growth = replacement.size() - (end - start); // modulo 2^64
    const size_t until = next < before.starts.size() ? before.starts[next] + growth : content.size();
    starts.reserve(before.starts.size() + 16);
    starts.assign(before.starts.begin(), before.starts.begin() + static_cast<std::ptrdiff_t>(kept) + 1);
    const bool same = AddStarts(content, starts.back(), until, starts);
    for (size_t at = next + 1; at < before.starts.size(); ++at)
        starts.push_back(before.starts[at] + growth);
    if (!same || !before.sourceStarts.empty())
        sourceStarts = SourceLineStarts(content);
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

} // namespace wren::lsp
