#include "wren/symbols/NameColumn.h"

#include "base/Identifier.h"

#include <algorithm>
#include <cstddef>

namespace wren {

namespace {

bool StandsAlone(std::string_view line, size_t start, std::string_view name)
{
    const size_t end = start + name.size();
    const bool before = start > 0 && base::IsIdentifierCharacter(line[start - 1]);
    const bool after = end < line.size() && base::IsIdentifierCharacter(line[end]);
    return !(before && base::IsIdentifierCharacter(name.front())) &&
           !(after && base::IsIdentifierCharacter(name.back()));
}

size_t Find(std::string_view line, std::string_view name)
{
    if (name.empty())
        return std::string_view::npos;
    size_t start = line.find(name);
    while (start != std::string_view::npos && !StandsAlone(line, start, name))
        start = line.find(name, start + 1);
    return start;
}

// "put" of "put:at:", "operator" of "operator ==".
std::string_view FirstPart(std::string_view name)
{
    return name.substr(0,
                       static_cast<size_t>(std::ranges::find_if_not(name, base::IsIdentifierCharacter) - name.begin()));
}

} // namespace

unsigned NameColumn(std::string_view line, std::string_view name)
{
    size_t start = Find(line, name);
    if (start == std::string_view::npos)
        start = Find(line, FirstPart(name));
    return start == std::string_view::npos ? 1 : static_cast<unsigned>(start + 1);
}

} // namespace wren
