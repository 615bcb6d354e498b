// The places of uses, as the client counts.
#pragma once

#include "resolve/Resolver.h"
#include "wren/lsp/session/Text.h"

#include <memory>
#include <string_view>

namespace wren::lsp {

// For one text, which must outlive it. Uses come in the order of the text: the whole costs one pass over it.
class UseRanges {
public:
    UseRanges(std::string_view text, Encoding encoding);

    size_t OffsetOf(const resolve::Use& use); // bytes
    lsp::Range Of(const resolve::Use& use);   // of the word there

private:
    Position PositionOf(size_t offset); // in the line of the last use

    const std::string_view text;
    const Encoding encoding;
    std::unique_ptr<const Text> lines; // only for a text whose lines the index counts otherwise
    unsigned line = 1;
    size_t lineStart = 0;
    size_t counted = 0; // up to this offset, in the line
    unsigned units = 0; // from the line's start to there
};

} // namespace wren::lsp
