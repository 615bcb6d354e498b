#include "wren/lsp/features/Commands.h"

#include "base/DirectoryLock.h"
#include "symbols/TagsFile.h"
#include "wren/lsp/protocol/Uri.h"
#include "wren/projects/Project.h"

#include <optional>
#include <thread>
#include <vector>

namespace wren::lsp {

namespace {

using ProjectPointer = std::shared_ptr<Project>;

[[noreturn]] void FailRequest(const std::string& why)
{
    throw Failure(FailureCode::RequestFailed, why);
}

void Refresh(Project& project, const std::vector<std::string>& paths, const RequestContext& context)
{
    project.ResumeIndexing();
    const base::Result<void> current = project.Refresh(paths, context.cancel);
    context.CheckCancelled();
    if (!current)
        FailRequest(current.Failure().Message());
}

Json MakeCurrent(const std::string& path, const RequestContext& context)
{
    if (path.empty()) {
        for (const ProjectPointer& project : context.projects.All())
            Refresh(*project, {}, context);
        return nullptr;
    }
    const ProjectPointer project = context.projects.For(path);
    const bool isRoot = path == project->Root();
    Refresh(*project, isRoot ? std::vector<std::string>() : std::vector{path}, context);
    return nullptr;
}

// Of one project's root, as "wren tags" writes it there.
std::string WriteTags(Project& project, const RequestContext& context)
{
    Refresh(project, {}, context);
    const symbols::SnapshotPointer snapshot = project.Workspace().Project()->Current();
    if (snapshot == nullptr)
        FailRequest(project.Root() + " has no index");
    symbols::TagsFileOptions options;
    options.target = project.Root() + "/tags";
    options.root = project.Root();
    options.version = WREN_VERSION;
    options.jobs = std::max(1u, std::thread::hardware_concurrency());
    const base::DirectoryLock lock(
        project.Root(), [] {}, [&] { return context.cancel.IsCancelled(); });
    context.CheckCancelled();
    const auto written = symbols::WriteTagsFile(*snapshot, options, context.cancel);
    context.CheckCancelled();
    if (!written)
        FailRequest(written.Failure().Message());
    return options.target;
}

ProjectPointer ProjectForTags(const std::string& path, const RequestContext& context)
{
    std::vector<ProjectPointer> indexed;
    for (const ProjectPointer& each : context.projects.All())
        if (each->IsIndexed() && (path.empty() || each->Root() == path))
            indexed.push_back(each);
    if (indexed.size() != 1)
        RefuseParameters(!path.empty()     ? path + " is not an indexed root"
                         : indexed.empty() ? "nothing is indexed"
                                           : "there are several roots; name one");
    return indexed.front();
}

Json StatusOf(Project& project, const Projects& projects)
{
    const symbols::Snapshot::Size size = projects.SizeOf(project);
    const Project::Activity now = project.Now();
    return {{"root", project.Root()},     {"files", size.files}, {"symbols", size.symbols}, {"size", size.bytes},
            {"indexing", now.isIndexing}, {"done", now.done},    {"total", now.total}};
}

Json Status(const RequestContext& context)
{
    Json roots = Json::array();
    for (const ProjectPointer& project : context.projects.All())
        if (project->IsIndexed())
            roots.push_back(StatusOf(*project, context.projects));
    return {{"roots", roots}};
}

} // namespace

void from_json(const Json& json, ExecuteCommandParams& params)
{
    params.command = Member<std::string>(json, "command");
    const auto arguments = OptionalMember<std::vector<Json>>(json, "arguments").value_or(std::vector<Json>());
    if (params.command != kIndexCommand && params.command != kTagsCommand && params.command != kStatusCommand)
        RefuseParameters("the command '" + params.command + "' is not known");
    if (arguments.size() > (params.command == kStatusCommand ? 0 : 1))
        RefuseParameters("'" + params.command + "' takes fewer arguments");
    if (arguments.empty() || arguments[0].is_null())
        return;
    const std::optional<std::string> path =
        arguments[0].is_string() ? PathOfUri(arguments[0].get_ref<const std::string&>()) : std::nullopt;
    if (!path)
        RefuseParameters("the argument of '" + params.command + "' is not the URI of a file or a folder");
    params.path = *path;
    while (params.path.size() > 1 && params.path.ends_with('/'))
        params.path.pop_back();
}

Json ExecuteCommand(const ExecuteCommandParams& params, const RequestContext& context)
{
    if (params.command == kStatusCommand)
        return Status(context);
    if (params.command == kIndexCommand)
        return MakeCurrent(params.path, context);
    return WriteTags(*ProjectForTags(params.path, context), context);
}

} // namespace wren::lsp
