#include "base/Paths.h"
#include "base/UserDirectories.h"
#include "symbols/Index.h"

#include <sys/stat.h>

namespace symbols {

namespace {

bool IsKind(const std::string& path, mode_t kind)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && (kind == 0 || (status.st_mode & S_IFMT) == kind);
}

// A directory named "tags" is an ordinary part of a project.
bool IsRoot(const std::string& directory)
{
    constexpr struct {
        const char* leaf;
        mode_t kind; // 0 for any
    } kSigns[] = {
        {"/tags", S_IFREG}, {"/.git", 0}, {"/.hg", S_IFDIR}, {"/.jj", S_IFDIR}, {"/compile_commands.json", S_IFREG},
        {"/.wren", 0}};
    for (const auto& [leaf, kind] : kSigns)
        if (IsKind(directory + leaf, kind))
            return true;
    return false;
}

bool IsHome(const std::string& directory)
{
    struct stat home;
    struct stat status;
    return !base::Home().empty() && ::stat(base::Home().c_str(), &home) == 0 &&
           ::stat(directory.c_str(), &status) == 0 && home.st_dev == status.st_dev && home.st_ino == status.st_ino;
}

} // namespace

std::optional<std::string> FindRoot(const std::string& path)
{
    std::string directory = IsKind(path, S_IFDIR) ? path : base::DirectoryOf(path);
    while (directory.ends_with('/'))
        directory.pop_back();
    for (; !directory.empty() && !IsHome(directory); directory = base::DirectoryOf(directory))
        if (IsRoot(directory))
            return directory;
    return std::nullopt;
}

} // namespace symbols
