// What a name is, for a reader.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

namespace wren::lsp {

// The declaration as written, its comment, the value of a macro or an enumerator, and where it is; null for no name.
Json Hover(const TextDocumentPositionParams& params, const RequestContext& context);

} // namespace wren::lsp
