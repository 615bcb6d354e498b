// Who calls whom, and what derives from what.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

#include <string>

namespace wren::lsp {

// An item that an earlier answer had.
struct HierarchyParams {
    std::string uri;
    Range range;
    Range selectionRange;
};
void from_json(const Json& json, HierarchyParams& params);

// Items of the function, or the class, at the place; null for anything else.
Json PrepareCallHierarchy(const TextDocumentPositionParams& params, const RequestContext& context);
Json PrepareTypeHierarchy(const TextDocumentPositionParams& params, const RequestContext& context);

Json IncomingCalls(const HierarchyParams& params, const RequestContext& context);
Json OutgoingCalls(const HierarchyParams& params, const RequestContext& context);
Json Supertypes(const HierarchyParams& params, const RequestContext& context);
Json Subtypes(const HierarchyParams& params, const RequestContext& context);

} // namespace wren::lsp
