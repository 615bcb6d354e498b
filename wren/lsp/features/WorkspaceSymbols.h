// Symbols of all projects by a few letters of their names.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

#include <string>

namespace wren::lsp {

struct WorkspaceSymbolParams {
    std::string query;
};
void from_json(const Json& json, WorkspaceSymbolParams& params);

// The best ones, definitions before declarations; symbols of the system's headers only when nothing else fits. Ranges
// are left out where the client asks for them later.
Json WorkspaceSymbols(const WorkspaceSymbolParams& params, const RequestContext& context);

// Fills in the range of one of them.
Json ResolveWorkspaceSymbol(const Json& item, const RequestContext& context);

} // namespace wren::lsp
