#include "wren/lsp/session/Session.h"

#include "symbols/Index.h"
#include "wren/lsp/protocol/Uri.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace wren::lsp {

namespace {

// The folders that the client names, by preference: workspaceFolders, rootUri, rootPath.
std::vector<std::string> FoldersOf(const Json& params)
{
    std::vector<std::string> folders;
    const auto add = [&](const Json& uri) {
        if (!uri.is_string())
            return;
        if (std::optional<std::string> path = PathOfUri(uri.get<std::string>()))
            folders.push_back(*std::move(path));
    };
    const Json named = params.value("workspaceFolders", Json());
    if (named.is_array())
        for (const Json& folder : named)
            add(folder.is_object() ? folder.value("uri", Json()) : Json());
    if (folders.empty())
        add(params.value("rootUri", Json()));
    const Json path = params.value("rootPath", Json());
    if (folders.empty() && path.is_string() && !path.get<std::string>().empty())
        folders.push_back(path);
    return folders;
}

// Without links; as it is when it does not exist.
std::string RealPath(const std::string& path)
{
    std::error_code unknown;
    const std::filesystem::path real = std::filesystem::weakly_canonical(path, unknown);
    std::string text = unknown ? path : real.string();
    if (text.size() > 1 && text.ends_with('/'))
        text.pop_back();
    return text;
}

std::vector<TextChange> ChangesOf(const Json& params)
{
    std::vector<TextChange> changes;
    for (const Json& each : Member<std::vector<Json>>(params, "contentChanges"))
        changes.push_back({OptionalMember<Range>(each, "range"), Member<std::string>(each, "text")});
    return changes;
}

} // namespace

Session::Session(SessionOptions options, Client& client) : options(std::move(options)), client(client) {}

void Session::Tell(const std::string& problem)
{
    if (!problem.empty())
        client.Log(MessageType::Warning, problem);
}

void Session::Initialize(const Json& params)
{
    abilities = ClientAbilities(params.value("capabilities", Json::object()));
    for (const std::string& problem : Apply(params.value("initializationOptions", Json()), settings))
        Tell(problem);
    folders = options.root.empty() ? FoldersOf(params) : std::vector<std::string>{options.root};
    for (std::string& folder : folders)
        folder = RealPath(folder);
    projects.emplace(OptionsOfProjects(), ListenerForIndexes());
}

void Session::Initialized(const Json&)
{
    projects->SetFolders(folders);
}

ProjectsOptions Session::OptionsOfProjects()
{
    ProjectsOptions made;
    made.cache = options.cache;
    made.withIndex = options.withIndex && settings.index;
    made.withSystem = settings.systemHeaders;
    if (base::Result<tagging::Settings> tagging = symbols::IndexSettings())
        made.tagging = *std::move(tagging);
    else
        client.Show(MessageType::Error, tagging.Failure().Message());
    return made;
}

IndexListener Session::ListenerForIndexes()
{
    IndexListener listener;
    listener.begin = [](const std::string&) {};
    listener.progress = [](const std::string&, const symbols::Progress&) {};
    listener.end = [](const std::string&, const std::string&) {};
    listener.warn = [this](const std::string& text) { client.Log(MessageType::Warning, text); };
    return listener;
}

void Session::Close()
{
    if (projects)
        projects->Close();
}

bool Session::Take(std::string_view method, const Json& params)
{
    constexpr struct {
        std::string_view method;
        void (Session::*take)(const Json& params);
    } kNotifications[] = {
        {"initialized", &Session::Initialized},          {"textDocument/didOpen", &Session::DidOpen},
        {"textDocument/didChange", &Session::DidChange}, {"textDocument/didClose", &Session::DidClose},
        {"textDocument/didSave", &Session::DidSave},
    };
    for (const auto& each : kNotifications)
        if (each.method == method) {
            (this->*each.take)(params);
            return true;
        }
    return false;
}

RequestContext Session::ContextFor(const base::CancelToken& cancel)
{
    return {abilities, settings, documents.All(), *projects, cancel, nullptr};
}

void Session::DidOpen(const Json& params)
{
    const Json item = Member<Json>(params, "textDocument");
    Document document;
    document.uri = Member<std::string>(item, "uri");
    document.languageId = OptionalMember<std::string>(item, "languageId").value_or("");
    document.version = OptionalMember<long>(item, "version").value_or(0);
    document.text = std::make_shared<const Text>(Member<std::string>(item, "text"));
    std::string problem;
    const DocumentPointer opened = documents.Open(std::move(document), problem);
    Tell(problem);
    projects->For(opened->path)->TextChanged(opened);
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
        projects->For(changed->path)->TextChanged(changed);
}

void Session::DidClose(const Json& params)
{
    std::string problem;
    const DocumentPointer closed =
        documents.Close(Member<std::string>(Member<Json>(params, "textDocument"), "uri"), problem);
    Tell(problem);
    if (closed != nullptr)
        projects->For(closed->path)->TextClosed(closed->path);
}

// The index notices the file by itself.
void Session::DidSave(const Json&) {}

} // namespace wren::lsp
