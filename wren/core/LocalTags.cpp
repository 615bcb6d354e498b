#include "wren/core/LocalTags.h"

#include <filesystem>
#include <system_error>

namespace wren {

namespace fs = std::filesystem;

std::optional<std::string> FindLocalTags(const std::string& directory)
{
    if (directory.empty())
        return std::nullopt;
    for (fs::path at = directory;; at = at.parent_path()) {
        std::error_code unknown;
        if (fs::exists(fs::symlink_status(at / "tags", unknown)))
            return at / "tags";
        if (at == at.parent_path())
            return std::nullopt;
    }
}

std::string WithTilde(const std::string& path, const std::string& home)
{
    return !home.empty() && path.starts_with(home) ? "~/" + path.substr(home.size()) : path;
}

} // namespace wren
