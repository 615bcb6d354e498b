#include "wren/lsp/session/SymbolPlace.h"

#include "wren/symbols/NameColumn.h"

#include <algorithm>

namespace wren::lsp {

namespace {

constexpr unsigned kFarthest = 200; // lines

bool Has(std::string_view line, std::string_view name)
{
    return NameColumn(line, name) > 1 || line.starts_with(name.substr(0, name.find(':')));
}

// The line, or the nearest one with the name.
unsigned LineOf(const Text& text, unsigned line, std::string_view name)
{
    for (unsigned far = 0; far <= kFarthest; ++far) {
        if (Has(text.SourceLine(line + far), name))
            return line + far;
        if (line > far && Has(text.SourceLine(line - far), name))
            return line - far;
    }
    return line;
}

} // namespace

std::optional<SymbolPlace> PlaceOf(const symbols::Symbol& symbol, const std::string& pathInIndex,
                                   const Subject& subject)
{
    const TextPointer text = subject.TextOf(pathInIndex);
    if (text == nullptr)
        return std::nullopt;
    const std::string_view shown = symbol.name.substr(0, symbol.name.find(':'));
    const unsigned line = LineOf(*text, symbol.line, shown);
    const size_t start = text->SourceLineStart(line);
    const std::string_view content = text->SourceLine(line);
    const size_t name = std::min<size_t>(NameColumn(content, shown) - 1, content.size());
    const unsigned last = std::max(line, symbol.endLine == 0 ? line : symbol.endLine + line - symbol.line);
    const size_t end = text->SourceLineStart(last) + text->SourceLine(last).size();
    const size_t nameEnd = std::min(name + shown.size(), content.size());
    const Encoding encoding = subject.Encoding();
    return SymbolPlace{subject.UriOf(pathInIndex), text->RangeOf(start + name, start + nameEnd, encoding),
                       text->RangeOf(start, std::max(end, start + nameEnd), encoding)};
}

} // namespace wren::lsp
