#include "wren/desktop/symbols/ProjectRoot.h"

#include "wren/projects/Projects.h"

#include <filesystem>
#include <system_error>

namespace wren {

std::string ProjectOf(const std::string& path, Projects& projects)
{
    std::error_code unknown;
    if (!path.starts_with('/'))
        return std::filesystem::current_path(unknown).string();
    const std::string root = projects.For(path)->Root();
    return root == "/" || root.empty() ? std::filesystem::path(path).parent_path().string() : root;
}

} // namespace wren
