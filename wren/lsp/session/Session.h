// What the client has told: its abilities, its folders, its settings, its texts.
#pragma once

#include "wren/lsp/session/Client.h"
#include "wren/lsp/session/ClientAbilities.h"
#include "wren/lsp/session/Documents.h"
#include "wren/lsp/session/Projects.h"
#include "wren/lsp/session/RequestContext.h"
#include "wren/lsp/session/Settings.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wren::lsp {

struct SessionOptions {
    std::string root;              // beats the client's; "" for that
    std::vector<std::string> tags; // files
    bool withIndex = true;
    std::string cache; // the directory of all indexes; "" for the user's
};

// Used by the thread that reads messages; the contexts that it hands out, by any. It does no work that grows with a
// tree.
class Session {
public:
    Session(SessionOptions options, Client& client); // borrows the client

    void Initialize(const Json& params); // once, before anything else
    void Close();                        // ends all indexing; waits for it

    // Whether the notification is known. Throws a Failure.
    bool Take(std::string_view method, const Json& params);

    const ClientAbilities& Abilities() const { return abilities; }
    RequestContext ContextFor(const base::CancelToken& cancel);

private:
    void Initialized(const Json& params);
    void DidOpen(const Json& params);
    void DidChange(const Json& params);
    void DidClose(const Json& params);
    void DidSave(const Json& params);

    void Tell(const std::string& problem);
    ProjectsOptions OptionsOfProjects();
    IndexListener ListenerForIndexes();

    const SessionOptions options;
    Client& client;
    ClientAbilities abilities;
    Settings settings;
    Documents documents;
    std::vector<std::string> folders;
    std::optional<Projects> projects;
};

} // namespace wren::lsp
