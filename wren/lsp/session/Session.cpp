#include "wren/lsp/session/Session.h"

#include "symbols/Index.h"
#include "wren/lsp/protocol/Uri.h"
#include "wren/lsp/session/Folders.h"
#include "wren/lsp/session/WorkDone.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <sys/types.h>
#include <utility>

namespace wren::lsp {

namespace {

std::vector<TextChange> ChangesOf(const Json& params)
{
    std::vector<TextChange> changes;
    for (const Json& each : Member<std::vector<Json>>(params, "contentChanges"))
        changes.push_back({OptionalMember<Range>(each, "range"), Member<std::string>(each, "text")});
    return changes;
}

Json Watchers()
{
    Json watchers = Json::array();
    for (const char* const pattern :
         {"**/*.{c,cc,cpp,cxx,c++,cp,CPP,C,h,hh,hpp,hxx,h++,H,hp,m,mm,M,inl,ipp,tpp,tcc,txx}",
          "**/{.gitignore,.wrenignore}"})
        watchers.push_back({{"globPattern", pattern}});
    return watchers;
}

} // namespace

Session::Session(SessionOptions given, Client& client, base::CancelToken& stop)
    : options(std::move(given)), client(client), stop(stop), projects(ListenerForIndexes()), settler(projects),
      background(1)
{
}

Session::~Session()
{
    Stop();
}

void Session::Stop()
{
    Close();
    projects.Stop();
}

void Session::Tell(const std::string& problem)
{
    if (!problem.empty())
        client.Log(MessageType::Warning, problem);
}

void Session::Initialize(const Json& params)
{
    if (!params.is_object())
        RefuseParameters("the parameters of 'initialize' are not an object");
    abilities = ClientAbilities(params.value("capabilities", Json::object()));
    initializationOptions = params.value("initializationOptions", Json());
    folders = options.root.empty() ? NamedFolders(params) : std::vector{RealFolder(options.root)};
    ApplySettings();
    const Json process = params.value("processId", Json());
    if (process.is_number_unsigned() && process.get<std::uint64_t>() > 1 &&
        process.get<std::uint64_t>() <= static_cast<std::uint64_t>(std::numeric_limits<pid_t>::max()))
        parent.emplace(process.get<pid_t>(), stop);
}

// Each source of settings counts over the one before.
void Session::ApplySettings()
{
    settings = Settings();
    for (const Json* const given : {&initializationOptions, &configuration})
        for (const std::string& problem : Apply(*given, settings))
            if (told.insert(problem).second)
                Tell(problem);
    if (!options.tags.empty())
        settings.tags = options.tags;
    settings.index = settings.index && options.withIndex;
}

// What the client configures may turn off the indexing, so that is known first, unless the client goes on without
// telling it.
void Session::Initialized(const Json&)
{
    FindCtags();
    Register();
    if (abilities.Can("workspace/configuration"))
        AskForConfiguration();
    else
        Start();
}

// Each in a request of its own: a client that refuses one takes the others. No capability says that a client takes the
// registration for folders. Those that take the one for settings do; Emacs takes only files and shows a warning for
// anything else.
void Session::Register()
{
    const bool canWatch = abilities.Can("workspace/didChangeWatchedFiles/dynamicRegistration");
    const bool canConfigure = abilities.Can("workspace/didChangeConfiguration/dynamicRegistration");
    const auto add = [&](bool can, const char* method, const Json& registerOptions) {
        Json registration = {{"id", method}, {"method", method}};
        if (!registerOptions.is_null())
            registration["registerOptions"] = registerOptions;
        if (can)
            client.Ask("client/registerCapability", {{"registrations", Json::array({registration})}}, nullptr);
    };
    add(canWatch, "workspace/didChangeWatchedFiles", {{"watchers", Watchers()}});
    add(canConfigure, "workspace/didChangeConfiguration", {{"section", "wren"}});
    add(canConfigure && abilities.Can("workspace/workspaceFolders"), "workspace/didChangeWorkspaceFolders", Json());
}

// One request at a time, however often a client says that there is something new.
void Session::AskForConfiguration()
{
    asksAgain = asksConfiguration;
    if (asksConfiguration)
        return;
    asksConfiguration = true;
    client.Ask("workspace/configuration", {{"items", Json::array({{{"section", "wren"}}})}},
               [this](const Json* result) {
                   asksConfiguration = false;
                   if (result != nullptr && result->is_array() && !result->empty())
                       Configure(result->front());
                   Start();
                   if (asksAgain)
                       AskForConfiguration();
               });
}

void Session::Configure(const Json& given)
{
    configuration = given;
    ApplySettings();
    if (isStarted)
        UpdateProjects();
}

void Session::FindCtags()
{
    base::Result<tagging::Settings> found = symbols::IndexSettings();
    hasCtags = static_cast<bool>(found);
    if (hasCtags)
        tagging = *std::move(found);
    else
        client.Show(MessageType::Error, found.Failure().Message());
}

void Session::Start()
{
    if (isStarted)
        return;
    isStarted = true;
    for (const std::string& folder : folders)
        if (options.root.empty() && IsTooLarge(folder))
            client.Show(MessageType::Info, folder + " is not indexed as a whole; open a project in it, or name it with "
                                                    "'wren lsp --root'. Open files and what they include are served.");
    UpdateProjects();
}

ProjectsOptions Session::OptionsOfProjects() const
{
    ProjectsOptions made;
    made.cache = options.cache;
    made.withIndex = settings.index && hasCtags;
    made.withSystem = settings.systemHeaders && made.withIndex;
    made.tagging = tagging;
    made.tags = settings.tags;
    return made;
}

// Projects that are not needed any more end in the background: their threads may need a moment.
void Session::UpdateProjects()
{
    std::vector<Folder> named;
    for (const std::string& folder : folders)
        named.push_back({folder, !options.root.empty() || !IsTooLarge(folder)});
    background.Add([dropped = projects.Configure(OptionsOfProjects(), named)]() {});
    for (const auto& [path, document] : *documents.All())
        TellText(document);
}

void Session::TellText(const DocumentPointer& document)
{
    const std::vector<std::shared_ptr<Project>> around = projects.Around(document->path);
    std::vector<std::weak_ptr<Project>>& known = holders[document->path];
    for (const std::weak_ptr<Project>& each : known)
        if (const std::shared_ptr<Project> before = each.lock();
            before != nullptr && !std::ranges::count(around, before))
            before->TextClosed(document->path);
    known.assign(around.begin(), around.end());
    for (const std::shared_ptr<Project>& each : around)
        each->TextChanged(document->path, AsOpenText(document));
    around.front()->ResumeIndexing();
    early.TextChanged(around.front(), document->path, AsOpenText(document));
    settler.TextChanged();
}

IndexListener Session::ListenerForIndexes()
{
    IndexListener listener;
    listener.begin = [this](const std::string& title, std::function<void()> cancel) -> std::shared_ptr<ShownWork> {
        if (!abilities.Can("window/workDoneProgress"))
            return nullptr;
        const std::lock_guard lock(mutex);
        const std::string token = "wren-" + std::to_string(++tokens);
        std::shared_ptr<WorkDone> work = WorkDone::Create(client, token, title);
        // The end of the work may take a while: what is done is kept.
        cancels[token] = [cancel = std::move(cancel), shown = std::weak_ptr(work)] {
            cancel();
            if (const std::shared_ptr<WorkDone> still = shown.lock())
                still->End("cancelled");
        };
        return work;
    };
    listener.warn = [this](const std::string& text) { client.Log(MessageType::Warning, text); };
    return listener;
}

void Session::CancelProgress(const Json& params)
{
    const Json token = Member<Json>(params, "token");
    const std::lock_guard lock(mutex);
    const auto found = token.is_string() ? cancels.find(token.get<std::string>()) : cancels.end();
    if (found != cancels.end())
        found->second();
}

void Session::Close()
{
    ends.Cancel();
    projects.Close();
}

bool Session::Take(std::string_view method, const Json& params)
{
    constexpr struct {
        std::string_view method;
        void (Session::*take)(const Json& params);
    } kNotifications[] = {
        {"initialized", &Session::Initialized},
        {"textDocument/didOpen", &Session::DidOpen},
        {"textDocument/didChange", &Session::DidChange},
        {"textDocument/didClose", &Session::DidClose},
        {"textDocument/didSave", &Session::DidSave},
        {"workspace/didChangeWatchedFiles", &Session::DidChangeWatchedFiles},
        {"workspace/didChangeWorkspaceFolders", &Session::DidChangeWorkspaceFolders},
        {"workspace/didChangeConfiguration", &Session::DidChangeConfiguration},
        {"window/workDoneProgress/cancel", &Session::CancelProgress},
    };
    for (const auto& each : kNotifications)
        if (each.method == method) {
            (this->*each.take)(params);
            return true;
        }
    return false;
}

RequestContext Session::ContextFor(const base::CancelToken& cancel, const Json& params)
{
    Start();
    RequestContext context{abilities, settings, documents.All(), projects, cancel, nullptr};
    const Json token = params.is_object() ? params.value("partialResultToken", Json()) : Json();
    if (token.is_string() || token.is_number_integer())
        context.sendPart = [this, token, &cancel](const Json& part) {
            if (!cancel.IsCancelled())
                client.Notify("$/progress", {{"token", token}, {"value", part}});
        };
    return context;
}

void Session::DidOpen(const Json& params)
{
    Start();
    const Json item = Member<Json>(params, "textDocument");
    Document document;
    document.uri = Member<std::string>(item, "uri");
    document.languageId = OptionalMember<std::string>(item, "languageId").value_or("");
    document.version = OptionalMember<long>(item, "version").value_or(0);
    document.text = std::make_shared<const Text>(Member<std::string>(item, "text"));
    std::string problem;
    const DocumentPointer opened = documents.Open(std::move(document), problem);
    Tell(problem);
    TellText(opened);
}

void Session::DidChange(const Json& params)
{
    const Json item = Member<Json>(params, "textDocument");
    std::string problem;
    const DocumentPointer changed =
        documents.Change(Member<std::string>(item, "uri"), OptionalMember<long>(item, "version").value_or(0),
                         ChangesOf(params), abilities.Encoding(), problem);
    Tell(problem);
    if (changed != nullptr)
        TellText(changed);
}

void Session::DidClose(const Json& params)
{
    std::string problem;
    const DocumentPointer closed =
        documents.Close(Member<std::string>(Member<Json>(params, "textDocument"), "uri"), problem);
    Tell(problem);
    if (closed == nullptr)
        return;
    for (const std::weak_ptr<Project>& each : holders[closed->path])
        if (const std::shared_ptr<Project> holder = each.lock())
            holder->TextClosed(closed->path);
    holders.erase(closed->path);
    settler.TextChanged();
}

// The index notices the file by itself, unless the user has ended the indexing.
void Session::DidSave(const Json& params)
{
    const std::string uri = Member<std::string>(Member<Json>(params, "textDocument"), "uri");
    projects.For(PathOfDocument(uri))->ResumeIndexing();
}

// The index watches by itself, but systems have too few watches for large trees. What comes while files are looked at
// is looked at together.
void Session::DidChangeWatchedFiles(const Json& params)
{
    for (const Json& each : Member<std::vector<Json>>(params, "changes")) {
        const std::optional<std::string> path = PathOfUri(Member<std::string>(each, "uri"));
        if (!path)
            continue;
        const std::shared_ptr<Project> project = projects.For(*path);
        project->ResumeIndexing();
        const std::lock_guard lock(mutex);
        if (changedFiles.empty())
            background.Add([this] { RefreshFiles(); });
        changedFiles[project].insert(*path);
    }
}

void Session::RefreshFiles()
{
    std::map<std::shared_ptr<Project>, std::set<std::string>> changed;
    {
        const std::lock_guard lock(mutex);
        changed.swap(changedFiles);
    }
    for (const auto& [project, paths] : changed)
        if (const base::Result<void> current = project->Refresh({paths.begin(), paths.end()}, ends);
            !current && !ends.IsCancelled())
            client.Log(MessageType::Warning, current.Failure().Message());
}

void Session::DidChangeWorkspaceFolders(const Json& params)
{
    const Json event = Member<Json>(params, "event");
    if (!options.root.empty())
        return;
    ChangeFolders(event, folders);
    if (isStarted)
        UpdateProjects();
}

// Clients that answer "workspace/configuration" often send null here.
void Session::DidChangeConfiguration(const Json& params)
{
    if (abilities.Can("workspace/configuration"))
        return AskForConfiguration();
    const Json given = OptionalMember<Json>(params, "settings").value_or(Json());
    Configure(given.is_object() ? given.value("wren", Json()) : Json());
}

} // namespace wren::lsp
