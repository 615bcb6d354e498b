// What a call takes.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

namespace wren::lsp {

// Null when nothing is called at the place.
Json SignatureHelp(const TextDocumentPositionParams& params, const RequestContext& context);

} // namespace wren::lsp
