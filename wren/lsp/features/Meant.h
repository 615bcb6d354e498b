// The name at a place, as several features need it.
#pragma once

#include "wren/lsp/session/Subject.h"

#include <string_view>

namespace wren::lsp {

struct ByteRange {
    size_t start = 0;
    size_t end = 0;
};

// The word at, around or directly before the offset. In the name of an #include, that name without its quotes.
ByteRange NameAt(const Text& text, size_t offset, const resolve::Answers& answers);

} // namespace wren::lsp
