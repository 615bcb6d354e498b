// All requests that are answered, by name.
#pragma once

#include "wren/lsp/session/RequestContext.h"

#include <string_view>

namespace wren::lsp {

// Answers with the result; throws a Failure.
using Handler = Json (*)(const Json& params, const RequestContext& context);

// Null for an unknown method.
Handler HandlerOf(std::string_view method);

// Whether a request may wait for an index, and so must not keep others waiting.
bool IsLong(std::string_view method, const Json& params);

// "capabilities" of InitializeResult.
Json ServerCapabilities(const ClientAbilities& client);

} // namespace wren::lsp
