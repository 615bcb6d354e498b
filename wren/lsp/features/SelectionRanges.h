// What surrounds a place, from inside out.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace wren::lsp {

struct SelectionRangeParams {
    std::string uri;
    std::vector<Position> positions;
};
void from_json(const Json& json, SelectionRangeParams& params);

// Offsets of what contains the place: the word, the part between commas, what is within the brackets, with them, the
// statement or declaration, and so on, up to the text. Each is larger than the one before and contains it.
std::vector<std::pair<size_t, size_t>> SelectionsAround(const std::string& text, size_t offset);

Json SelectionRanges(const SelectionRangeParams& params, const RequestContext& context);

} // namespace wren::lsp
