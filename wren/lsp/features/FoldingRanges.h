// What an editor can fold away.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

#include <string_view>
#include <vector>

namespace wren::lsp {

struct FoldingRange {
    enum class Kind { Code, Comment, Imports };

    size_t startLine = 0; // from 0; stays visible
    size_t endLine = 0;   // the last one that is hidden
    Kind kind = Kind::Code;

    auto operator<=>(const FoldingRange&) const = default;
};

// Blocks in braces, comments of several lines and runs of line comments, groups of #if, runs of #include. Ends stand
// before a closing brace, #else or #endif. By line, each once.
std::vector<FoldingRange> FoldsOf(const Text& text);

Json FoldingRanges(const TextDocumentParams& params, const RequestContext& context);

} // namespace wren::lsp
