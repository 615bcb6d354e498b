// Where a name is mentioned.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

namespace wren::lsp {

struct ReferenceParams : TextDocumentPositionParams {
    bool includeDeclaration = true;
};
void from_json(const Json& json, ReferenceParams& params);

// Locations, those in the text itself first. Of a local, in its scope. When parts are asked for, all come in parts as
// soon as there are a thousand, and the result is then empty.
Json References(const ReferenceParams& params, const RequestContext& context);

// DocumentHighlights: the same within the text.
Json Highlights(const TextDocumentPositionParams& params, const RequestContext& context);

} // namespace wren::lsp
