#include "wren/symbols/IndexRoot.h"

#include "base/UserDirectories.h"
#include "symbols/Index.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace wren {

bool HasIndex(const std::string& root)
{
    symbols::IndexOptions options;
    options.root = root;
    return symbols::Index(std::move(options)).Current() != nullptr;
}

namespace {

namespace fs = std::filesystem;

// The nearest directory at or above 'directory' with an index, apart from "/" and the home directory.
std::optional<std::string> RootWithIndex(fs::path directory, const fs::path& home)
{
    for (; directory != directory.root_path() && directory != home; directory = directory.parent_path())
        if (HasIndex(directory))
            return directory;
    return std::nullopt;
}

fs::path HomeDirectory()
{
    std::error_code unknown;
    return fs::canonical(base::Home(), unknown);
}

std::optional<std::string> ProjectOf(const std::string& path, const fs::path& directory)
{
    std::optional<std::string> root = symbols::FindRoot(path);
    return root ? root : RootWithIndex(directory, HomeDirectory());
}

} // namespace

base::Result<std::string> RootForFile(const std::string& path)
{
    const fs::path directory = fs::path(path).parent_path();
    if (std::optional<std::string> root = ProjectOf(path, directory))
        return *std::move(root);
    if (directory == directory.root_path() || directory == HomeDirectory())
        return base::Error{directory.string() + " is not indexed unless you name it; use --in DIR"};
    return directory.string();
}

base::Result<std::string> RootForDirectory(const std::string& given)
{
    std::error_code problem;
    const fs::path directory = fs::canonical(given, problem);
    if (problem)
        return base::Error{given + " cannot be used: " + problem.message()};
    if (!fs::is_directory(directory, problem))
        return base::Error{given + " is not a directory"};
    return ProjectOf(directory, directory).value_or(directory.string());
}

} // namespace wren
