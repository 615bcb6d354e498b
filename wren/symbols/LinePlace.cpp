#include "wren/symbols/LinePlace.h"

#include "base/Identifier.h"

#include <algorithm>
#include <optional>

namespace wren {

namespace {

using Sort = TextPlace::Sort;

std::string_view PastBlanks(std::string_view text)
{
    const size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? "" : text.substr(start);
}

// The size of the typed part of the file's name.
std::optional<size_t> IncludeIn(std::string_view line)
{
    std::string_view rest = PastBlanks(line);
    if (!rest.starts_with('#'))
        return std::nullopt;
    rest = PastBlanks(rest.substr(1));
    const size_t word = std::min(rest.find_first_of(" \t<\""), rest.size());
    const std::string_view name = rest.substr(0, word);
    if (name != "include" && name != "import" && name != "include_next")
        return std::nullopt;
    rest = PastBlanks(rest.substr(word));
    if (rest.empty() || (rest.front() != '<' && rest.front() != '"') ||
        rest.find(rest.front() == '<' ? '>' : '"', 1) != std::string_view::npos)
        return std::nullopt;
    return rest.size() - 1 - rest.find_last_of("</\"");
}

std::string_view WordAtEnd(std::string_view line)
{
    size_t start = line.size();
    while (start > 0 && base::IsIdentifierCharacter(line[start - 1]))
        --start;
    return line.substr(start);
}

} // namespace

LinePlace PlaceAtEnd(std::string_view line)
{
    if (const std::optional<size_t> size = IncludeIn(line))
        return {Sort::Include, *size};
    const std::string_view word = WordAtEnd(line);
    LinePlace place{Sort::Unqualified, word.size()};
    if (!word.empty() && base::IsDigit(word.front()))
        return place; // "1.5", "0x"
    const std::string_view before = line.substr(0, line.size() - word.size());
    if (before.ends_with("->"))
        place.sort = Sort::Member;
    else if (before.ends_with("::"))
        place.sort = Sort::Qualified;
    else if (before.ends_with('.') && !before.ends_with("..")) {
        const std::string_view owner = WordAtEnd(before.substr(0, before.size() - 1));
        if (owner.empty() || !base::IsDigit(owner.front()))
            place.sort = Sort::Member;
    }
    return place;
}

} // namespace wren
