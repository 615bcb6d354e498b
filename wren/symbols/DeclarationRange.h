// Where a declaration stands in its text. Indexes know only lines.
#pragma once

#include "symbols/store/Snapshot.h"
#include "wren/symbols/SourceText.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace wren {

struct DeclarationRange { // bytes; ends are behind the last one
    size_t nameStart = 0;
    size_t nameEnd = 0;
    size_t start = 0; // of the first token
    size_t end = 0;   // of the last token; the name is within
};

// A line that has moved since the symbol was read is looked for by the symbol's name, near where it was. When the text
// does not have the name, as when a macro makes it, the name's range is empty, at the line's first token. Costs as much
// as the declaration is long, whatever the text. 'name' is where the name is, when that is known.
DeclarationRange RangeOfDeclaration(const tagging::Symbol& symbol, const SourceText& text,
                                    std::optional<size_t> name = std::nullopt);

// "put" of "put:at:"; the name itself of anything else.
std::string_view ShownName(const tagging::Symbol& symbol);

} // namespace wren
