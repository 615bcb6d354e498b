// Where a symbol is, as the client wants it.
#pragma once

#include "wren/lsp/session/Subject.h"

#include <optional>
#include <string>

namespace wren::lsp {

struct SymbolPlace {
    std::string uri;
    Range name;
    Range extent; // of the whole declaration; contains the name
};

// A line that has moved since the index read the file is looked for by the symbol's name, near where it was. Nullopt
// when the file cannot be read. 'name' is where the name is, in bytes, when that is known.
std::optional<SymbolPlace> PlaceOf(const symbols::Symbol& symbol, const std::string& pathInIndex,
                                   const Subject& subject, std::optional<size_t> name = std::nullopt);

} // namespace wren::lsp
