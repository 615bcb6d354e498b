#include "wren/core/UnaskedRebuilds.h"

#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <vector>

namespace wren {

namespace {

namespace fs = std::filesystem;

std::string NameOf(uid_t user)
{
    struct passwd entry;
    struct passwd* found = nullptr;
    std::vector<char> texts(16 * 1024);
    ::getpwuid_r(user, &entry, texts.data(), texts.size(), &found);
    return found == nullptr ? "user " + std::to_string(user) : found->pw_name;
}

bool AreSameDirectory(const fs::path& one, const fs::path& other)
{
    std::error_code unknown;
    return fs::equivalent(one, other, unknown);
}

} // namespace

std::optional<std::string> UnaskedRebuilds::WhyNot(const vetch::ShellRequest& request, const std::string& file) const
{
    const fs::path named = request.outdated;
    if (!AreSameDirectory(named.parent_path(), fs::path(file).parent_path()))
        return named.string() + " is a link to it";
    for (const std::string& path : {fs::path(file).parent_path().string(), file})
        if (std::optional<std::string> stranger = Stranger(path))
            return stranger;
    const Pair now = Look(request, file);
    const std::lock_guard guard(mutex);
    const auto last = tried.find(file);
    if (last != tried.end() && last->second == now)
        return "rebuilding them once has not helped";
    return std::nullopt;
}

void UnaskedRebuilds::Ended(const vetch::ShellRequest& request, const std::string& file)
{
    const Pair now = Look(request, file);
    const std::lock_guard guard(mutex);
    tried[file] = now;
}

UnaskedRebuilds::Pair UnaskedRebuilds::Look(const vetch::ShellRequest& request, const std::string& file)
{
    return {base::FileIdentity::At(file), request.newer, base::FileIdentity::At(request.newer)};
}

std::optional<std::string> UnaskedRebuilds::Stranger(const std::string& path) const
{
    struct stat status;
    if (::lstat(path.c_str(), &status) != 0 || status.st_uid == user || status.st_uid == 0)
        return std::nullopt;
    return path + " belongs to " + NameOf(status.st_uid);
}

} // namespace wren
