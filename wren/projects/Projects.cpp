#include "wren/projects/Projects.h"

#include "wren/symbols/IndexRoot.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace wren {

namespace {

bool IsWithin(const std::string& path, const std::string& folder)
{
    return path == folder || folder == "/" || path.starts_with(folder + "/");
}

bool AreSame(const ProjectsOptions& left, const ProjectsOptions& right)
{
    return left.withIndex == right.withIndex && left.withSystem == right.withSystem && left.cache == right.cache &&
           left.tags == right.tags;
}

} // namespace

Projects::~Projects()
{
    Close();
}

std::vector<Projects::ProjectPointer> Projects::Configure(const ProjectsOptions& given,
                                                          const std::vector<Folder>& named)
{
    const std::lock_guard lock(mutex);
    const bool keeps = AreSame(options, given);
    options = given;
    folders = named;
    ownRoots.clear();
    realPaths.clear();
    std::vector<ProjectPointer> dropped;
    for (ProjectPointer& each : all) {
        const bool isNamed = std::any_of(folders.begin(), folders.end(),
                                         [&](const Folder& folder) { return folder.root == each->Root(); });
        if (!keeps || !isNamed) {
            each->EndIndexing();
            dropped.push_back(std::move(each));
        }
    }
    std::erase(all, nullptr);
    for (const Folder& folder : folders)
        At(folder.root, folder.isIndexed);
    return dropped;
}

Projects::ProjectPointer Projects::At(const std::string& root, bool isIndexed)
{
    for (const ProjectPointer& each : all)
        if (each->Root() == root)
            return each;
    symbols::WorkspaceOptions workspace;
    workspace.root = root;
    workspace.cache = options.cache;
    workspace.withSystem = options.withSystem;
    workspace.withProject = isIndexed && options.withIndex;
    workspace.tagging = options.tagging;
    std::vector<std::string> tags;
    for (const std::string& each : options.tags)
        tags.push_back((std::filesystem::path(root) / each).lexically_normal().string());
    auto project = std::make_shared<Project>(workspace, workspace.withProject, std::move(tags), listener);
    all.push_back(project);
    if (options.withIndex && !isClosed)
        project->StartIndexing();
    return project;
}

// Looking for it reads directories, which is too much for each letter that is typed.
std::optional<std::string> Projects::OwnRoot(const std::string& path)
{
    const std::string directory = path.substr(0, path.rfind('/') + 1);
    const auto [known, isNew] = ownRoots.try_emplace(directory);
    if (isNew && path.starts_with('/'))
        if (base::Result<std::string> own = RootForFile(path))
            known->second = *std::move(own);
    return known->second;
}

const Folder* Projects::FolderAround(const std::string& path) const
{
    const Folder* innermost = nullptr;
    for (const Folder& folder : folders)
        if (IsWithin(path, folder.root) && (innermost == nullptr || folder.root.size() > innermost->root.size()))
            innermost = &folder;
    return innermost;
}

const std::string& Projects::RealPath(const std::string& path)
{
    const auto [known, isNew] = realPaths.try_emplace(path, path);
    std::error_code unknown;
    if (isNew && path.starts_with('/'))
        if (const std::filesystem::path real = std::filesystem::weakly_canonical(path, unknown); !unknown)
            known->second = real.string();
    return known->second;
}

Projects::ProjectPointer Projects::For(const std::string& path)
{
    const std::lock_guard lock(mutex);
    const Folder* innermost = FolderAround(path);
    if (innermost == nullptr && !folders.empty())
        innermost = FolderAround(RealPath(path));
    if (innermost != nullptr)
        return At(innermost->root, innermost->isIndexed);
    if (folders.empty())
        if (const std::optional<std::string> own = OwnRoot(path))
            return At(*own, true);
    return At("/", false);
}

std::vector<Projects::ProjectPointer> Projects::Around(const std::string& path)
{
    std::vector<ProjectPointer> around = {For(path)};
    const std::string& root = around.front()->Root();
    const std::lock_guard lock(mutex);
    for (const ProjectPointer& each : all)
        if (each->IsIndexed() && each->Root() != root && IsWithin(root, each->Root()))
            around.push_back(each);
    return around;
}

std::vector<std::string> Projects::RootsWithin(const std::string& root) const
{
    std::vector<std::string> within;
    const std::lock_guard lock(mutex);
    for (const ProjectPointer& each : all)
        if (each->IsIndexed() && each->Root() != root && IsWithin(each->Root(), root))
            within.push_back(each->Root());
    return within;
}

symbols::Snapshot::Size Projects::SizeOf(Project& project) const
{
    const symbols::SnapshotPointer snapshot = project.Workspace().Project()->Current();
    if (snapshot == nullptr)
        return {};
    symbols::Snapshot::Size size = snapshot->Totals();
    const std::vector<std::string> within = RootsWithin(project.Root());
    if (!within.empty())
        snapshot->ForEachFile([&](symbols::FileNumber, const symbols::File& file) {
            const std::string path = project.Root() + "/" + std::string(file.path);
            if (std::ranges::any_of(within, [&](const std::string& root) { return IsWithin(path, root); })) {
                --size.files;
                size.symbols -= file.symbols;
            }
            return true;
        });
    return size;
}

std::vector<Projects::ProjectPointer> Projects::All() const
{
    const std::lock_guard lock(mutex);
    return all;
}

void Projects::Close()
{
    const std::lock_guard lock(mutex);
    isClosed = true;
    for (const ProjectPointer& each : all)
        each->EndIndexing();
}

void Projects::Stop()
{
    Close();
    for (const ProjectPointer& each : All())
        each->Workspace().Parser().Stop();
}

} // namespace wren
