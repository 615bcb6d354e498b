#include "wren/lsp/features/UseRanges.h"

#include "base/Identifier.h"

#include <algorithm>
#include <string>

namespace wren::lsp {

namespace {

bool HasLoneReturn(std::string_view text)
{
    for (size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1))
        if (at + 1 == text.size() || text[at + 1] != '\n')
            return true;
    return false;
}

} // namespace

UseRanges::UseRanges(std::string_view text, Encoding encoding) : text(text), encoding(encoding)
{
    if (HasLoneReturn(text))
        lines = std::make_unique<const Text>(std::string(text));
}

size_t UseRanges::OffsetOf(const resolve::Use& use)
{
    if (use.line < line) {
        line = 1;
        lineStart = 0;
    }
    for (; line < use.line; ++line) {
        const size_t end = text.find('\n', lineStart);
        if (end == std::string_view::npos)
            return text.size();
        lineStart = end + 1;
    }
    return std::min(lineStart + use.column - 1, text.size());
}

Range UseRanges::Of(const resolve::Use& use)
{
    const size_t start = OffsetOf(use);
    size_t end = start;
    while (end < text.size() && base::IsIdentifierCharacter(text[end]))
        ++end;
    if (lines != nullptr)
        return lines->RangeOf(start, end, encoding);
    const Position first = PositionOf(start); // a name is ASCII, so that each byte is one unit
    return {first, {first.line, first.character + static_cast<unsigned>(end - start)}};
}

// From the use before, as generated lines have thousands.
Position UseRanges::PositionOf(size_t offset)
{
    if (counted < lineStart || counted > offset) {
        counted = lineStart;
        units = 0;
    }
    units += CountUnits(text.substr(counted, offset - counted), encoding);
    counted = offset;
    return {line - 1, units};
}

} // namespace wren::lsp
