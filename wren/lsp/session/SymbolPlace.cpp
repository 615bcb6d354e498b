#include "wren/lsp/session/SymbolPlace.h"

#include "wren/symbols/DeclarationRange.h"

namespace wren::lsp {

std::optional<SymbolPlace> PlaceOf(const symbols::Symbol& symbol, const std::string& pathInIndex,
                                   const Subject& subject, std::optional<size_t> name)
{
    const TextPointer text = subject.TextOf(pathInIndex);
    if (text == nullptr)
        return std::nullopt;
    const Encoding encoding = subject.Encoding();
    const DeclarationRange range = RangeOfDeclaration(symbol, text->Source(), name);
    return SymbolPlace{subject.UriOf(pathInIndex), text->RangeOf(range.nameStart, range.nameEnd, encoding),
                       text->RangeOf(range.start, range.end, encoding)};
}

} // namespace wren::lsp
