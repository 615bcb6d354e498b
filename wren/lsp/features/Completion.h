// Names that fit a place.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/lsp/session/RequestContext.h"

#include <string>

namespace wren::lsp {

struct CompletionParams {
    TextDocumentPositionParams at;
    std::string trigger; // the character that asks; "" when the user does
};
void from_json(const Json& json, CompletionParams& params);

// A CompletionList: nearest first, as "sortText" says. What is used at the place stands before what only matches in
// letters. Empty in comments and strings, and for a trigger character that means nothing there.
Json Completion(const CompletionParams& params, const RequestContext& context);

// Fills in documentation and detail, which are not sent before.
Json ResolveCompletion(const Json& item, const RequestContext& context);

} // namespace wren::lsp
