#include "wren/lsp/session/Projects.h"

#include "wren/symbols/IndexRoot.h"

#include <algorithm>
#include <utility>

namespace wren::lsp {

namespace {

bool IsWithin(const std::string& path, const std::string& folder)
{
    return path == folder || folder == "/" || path.starts_with(folder + "/");
}

} // namespace

Projects::Projects(ProjectsOptions options, IndexListener listener)
    : options(std::move(options)), listener(std::move(listener))
{
}

Projects::~Projects()
{
    Close();
}

void Projects::SetFolders(const std::vector<std::string>& given)
{
    const std::lock_guard lock(mutex);
    folders = given;
    for (const std::string& folder : folders)
        At(folder, true);
}

std::shared_ptr<Project> Projects::At(const std::string& root, bool isIndexed)
{
    for (const std::shared_ptr<Project>& each : all)
        if (each->Root() == root)
            return each;
    symbols::WorkspaceOptions workspace;
    workspace.root = root;
    workspace.cache = options.cache;
    workspace.withSystem = options.withSystem;
    workspace.tagging = options.tagging;
    auto project = std::make_shared<Project>(workspace, isIndexed && options.withIndex, listener);
    all.push_back(project);
    project->StartIndexing();
    return project;
}

std::shared_ptr<Project> Projects::For(const std::string& path)
{
    const std::lock_guard lock(mutex);
    std::string root;
    for (const std::string& folder : folders)
        if (IsWithin(path, folder) && folder.size() > root.size())
            root = folder;
    if (!root.empty())
        return At(root, true);
    if (folders.empty())
        if (const base::Result<std::string> own = RootForFile(path))
            return At(*own, true);
    return At("/", false);
}

std::vector<std::shared_ptr<Project>> Projects::All() const
{
    const std::lock_guard lock(mutex);
    return all;
}

void Projects::Close()
{
    for (const std::shared_ptr<Project>& each : All())
        each->StopIndexing();
}

} // namespace wren::lsp
