// Other names for locals and parameters.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

#include <string>

namespace wren::lsp {

struct RenameParams : TextDocumentPositionParams {
    std::string newName;
};
void from_json(const Json& json, RenameParams& params);

// Both are null for no name, and refused, with a sentence why, for what is not local.
Json PrepareRename(const TextDocumentPositionParams& params, const RequestContext& context);
// A WorkspaceEdit. Refused for a name that cannot be used, or is visible there already.
Json Rename(const RenameParams& params, const RequestContext& context);

// "renameProvider" for the client.
Json RenameProvider(const ClientAbilities& client);

} // namespace wren::lsp
