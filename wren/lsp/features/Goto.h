// Where what a name means is declared, defined, implemented.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

namespace wren::lsp {

// LocationLinks where the client can, else Locations; "[]" when nothing is found. At most 100.
Json Definition(const TextDocumentPositionParams& params, const RequestContext& context);
Json Declaration(const TextDocumentPositionParams& params, const RequestContext& context);
Json TypeDefinition(const TextDocumentPositionParams& params, const RequestContext& context);
// Overriders, derived classes; of anything else its definition.
Json Implementation(const TextDocumentPositionParams& params, const RequestContext& context);

} // namespace wren::lsp
