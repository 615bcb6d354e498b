#include "symbols/RootPaths.h"

#include <cstdlib>

namespace symbols {

namespace {

std::string RealPath(const std::string& path)
{
    char* found = ::realpath(path.c_str(), nullptr);
    std::string real = found != nullptr ? found : path;
    std::free(found);
    return real;
}

// As an index of it has it.
std::string WithoutSlashes(std::string root)
{
    while (root.size() > 1 && root.ends_with('/'))
        root.pop_back();
    return root;
}

std::optional<std::string> PathBelow(std::string_view path, const std::string& root)
{
    const std::string start = root == "/" ? root : root + "/";
    if (root.empty() || !path.starts_with(start))
        return std::nullopt;
    return std::string(path.substr(start.size()));
}

} // namespace

RootPaths::RootPaths(const std::string& given)
    : root(WithoutSlashes(given)), realRoot(root.empty() ? "" : RealPath(root))
{
}

std::optional<std::string> RootPaths::Below(std::string_view absolute) const
{
    return PathBelow(absolute, root);
}

std::string RootPaths::InIndex(std::string_view absolute, const Snapshot* project) const
{
    const std::optional<std::string> path = Below(absolute);
    if (path && (project == nullptr || project->FindFile(*path)))
        return *path;
    const std::optional<std::string> real = PathBelow(RealPath(std::string(absolute)), realRoot);
    if (real && (!path || (project != nullptr && project->FindFile(*real))))
        return *real;
    return path ? *path : std::string(absolute);
}

std::string RootPaths::Absolute(std::string_view path) const
{
    if (IsPathOfFile(path))
        return std::string(path);
    std::string absolute = root == "/" ? root : root + "/";
    return absolute.append(path);
}

} // namespace symbols
