// What a request is answered from.
#pragma once

#include "base/CancelToken.h"
#include "wren/lsp/session/ClientAbilities.h"
#include "wren/lsp/session/Documents.h"
#include "wren/lsp/session/Settings.h"
#include "wren/projects/Projects.h"

#include <functional>

namespace wren::lsp {

// Belongs to one request, on one worker. All references outlive it.
struct RequestContext {
    const ClientAbilities& client;
    Settings settings;          // as they were, too
    DocumentsPointer documents; // as they were when the request came
    Projects& projects;
    const base::CancelToken& cancel;
    // Sends a part of the result ahead; null when the client did not ask for parts.
    std::function<void(const Json& part)> sendPart;

    // Throws the failure of a cancelled request.
    void CheckCancelled() const;
};

} // namespace wren::lsp
