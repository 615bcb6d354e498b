// From a source to its header, and back.
#pragma once

#include "wren/lsp/session/RequestContext.h"

#include <string>

namespace wren::lsp {

struct TextDocumentIdentifier {
    std::string uri;
};
void from_json(const Json& json, TextDocumentIdentifier& params);

// The URI of the other one; null when there is none.
Json SwitchSourceHeader(const TextDocumentIdentifier& params, const RequestContext& context);

} // namespace wren::lsp
