#include "wren/desktop/NamedLine.h"

#include "base/Identifier.h"
#include "wren/core/Document.h"

#include <algorithm>

namespace wren {

namespace {

constexpr long kFarthest = 200;       // lines
constexpr long kLongestLine = 10'000; // bytes that are looked at

std::string LineOf(const Document& document, long line, long start)
{
    return document.Text(start, std::min(document.LineEnd(line), start + kLongestLine));
}

std::optional<long> OffsetIn(const Document& document, long line, std::string_view name)
{
    const long start = document.LineStart(line);
    const std::string text = LineOf(document, line, start);
    for (size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1))
        if (base::IdentifierAround(text, at) == name)
            return start + static_cast<long>(at);
    return std::nullopt;
}

} // namespace

std::optional<long> OffsetOfNameNear(const Document& document, long line, std::string_view name)
{
    const long last = document.LineAt(document.Length());
    const long wanted = std::clamp(line - 1, 0L, last);
    if (name.empty())
        return std::nullopt;
    for (long distance = 0; distance <= kFarthest; ++distance)
        for (const long each : {wanted - distance, wanted + distance})
            if (each >= 0 && each <= last)
                if (const std::optional<long> found = OffsetIn(document, each, name))
                    return found;
    return std::nullopt;
}

std::string NameAt(const Document& document, long offset)
{
    const long line = document.LineAt(offset);
    const long start = std::max(document.LineStart(line), offset - kLongestLine / 2);
    const std::string text = LineOf(document, line, start);
    return std::string(base::IdentifierAround(text, static_cast<size_t>(offset - start)));
}

} // namespace wren
