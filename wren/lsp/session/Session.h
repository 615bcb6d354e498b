// What the client has told: its abilities, its folders, its settings, its texts.
#pragma once

#include "wren/lsp/session/Client.h"
#include "wren/lsp/session/ClientAbilities.h"
#include "wren/lsp/session/Documents.h"
#include "wren/lsp/session/ParentWatch.h"
#include "wren/lsp/session/RequestContext.h"
#include "wren/lsp/session/Settings.h"
#include "wren/lsp/session/Workers.h"
#include "wren/projects/EarlyReader.h"
#include "wren/projects/Projects.h"
#include "wren/projects/Settler.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace wren::lsp {

struct SessionOptions {
    std::string root;              // beats the client's; "" for that
    std::vector<std::string> tags; // files; beats the client's
    bool withIndex = true;
    std::string cache; // the directory of all indexes; "" for the user's
};

// Used by the thread that reads messages; the contexts that it hands out, by any. It does no work that grows with a
// tree.
class Session {
public:
    Session(SessionOptions options, Client& client, base::CancelToken& stop); // borrows both; 'stop' ends the server
    ~Session();

    void Initialize(const Json& params); // once, before anything else; throws a Failure
    void Close();                        // ends all indexing soon; does not wait
    void Stop();                         // the same, and what questions wait for

    // Whether the notification is known. Throws a Failure.
    bool Take(std::string_view method, const Json& params);

    const ClientAbilities& Abilities() const { return abilities; }
    RequestContext ContextFor(const base::CancelToken& cancel, const Json& params);

private:
    void Initialized(const Json& params);
    void DidOpen(const Json& params);
    void DidChange(const Json& params);
    void DidClose(const Json& params);
    void DidSave(const Json& params);
    void DidChangeWatchedFiles(const Json& params);
    void DidChangeWorkspaceFolders(const Json& params);
    void DidChangeConfiguration(const Json& params);
    void CancelProgress(const Json& params);

    void Register();
    void AskForConfiguration();
    void RefreshFiles();
    void Configure(const Json& given);
    void ApplySettings();
    void Start(); // the projects, unless they are started
    void UpdateProjects();
    ProjectsOptions OptionsOfProjects() const;
    void TellText(const DocumentPointer& document);
    void Tell(const std::string& problem);
    void FindCtags();
    IndexListener ListenerForIndexes();

    const SessionOptions options;
    Client& client;
    base::CancelToken& stop;
    ClientAbilities abilities;
    Json initializationOptions;
    Json configuration;         // the last one
    std::set<std::string> told; // what is wrong with settings
    Settings settings;
    tagging::Settings tagging;
    bool hasCtags = false;
    Documents documents;
    std::map<std::string, std::vector<std::weak_ptr<Project>>> holders; // of open texts, by path
    std::vector<std::string> folders;
    bool isStarted = false;
    bool asksConfiguration = false;
    bool asksAgain = false; // the configuration has changed since it was asked for

    std::mutex mutex;                                     // guards the next members
    std::map<std::string, std::function<void()>> cancels; // of shown work, by token
    unsigned tokens = 0;
    std::map<std::shared_ptr<Project>, std::set<std::string>> changedFiles; // that the indexes have to look at

    Projects projects;
    base::CancelToken ends;
    EarlyReader early;
    Settler settler;
    Workers background; // one after the other
    std::optional<ParentWatch> parent;
};

} // namespace wren::lsp
