// The symbols of one text.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

namespace wren::lsp {

// A tree of DocumentSymbols where the client can show one, else a list of SymbolInformation.
Json DocumentSymbols(const TextDocumentParams& params, const RequestContext& context);

} // namespace wren::lsp
