// What the name at a place means, as several features need it.
#pragma once

#include "wren/lsp/session/Subject.h"

#include <optional>
#include <string_view>
#include <vector>

namespace wren::lsp {

// Leaves only what the place means most likely (see resolve::Answer::isMeant), and no declarations beside definitions
// of the same name and scope, or the reverse. Of files that an #include may mean, the nearest.
void KeepMeant(std::vector<resolve::Answer>& answers);

struct ByteRange {
    size_t start = 0;
    size_t end = 0;
};

// The word at, around or directly before the offset. In the name of an #include, that name without its quotes.
ByteRange NameAt(const Text& text, size_t offset, const resolve::Answers& answers);

} // namespace wren::lsp
