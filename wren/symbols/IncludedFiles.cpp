#include "wren/symbols/IncludedFiles.h"

#include "symbols/update/SystemDirectories.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr size_t kMostEntries = 5000; // of a directory that is read

bool IsHeader(const fs::path& name, bool ofSystem)
{
    constexpr std::array<std::string_view, 7> kSuffixes = {".h", ".hh", ".hpp", ".hxx", ".inl", ".ipp", ".tpp"};
    const std::string suffix = name.extension().string();
    return (ofSystem && suffix.empty()) || std::find(kSuffixes.begin(), kSuffixes.end(), suffix) != kSuffixes.end();
}

struct SearchedDirectory {
    fs::path path;
    bool ofSystem = false;
};

// "include" beside each directory on the way up to the root, and those directories themselves.
std::vector<SearchedDirectory> DirectoriesFor(const TextPlace& place, symbols::Workspace& workspace,
                                              const std::string& path)
{
    std::vector<SearchedDirectory> directories;
    symbols::File file;
    file.path = path;
    const fs::path own = fs::path(workspace.AbsolutePath(file)).parent_path();
    if (!place.isAngled)
        directories.push_back({own});
    file.path = "";
    const fs::path root = workspace.AbsolutePath(file);
    if (!path.starts_with('/'))
        for (fs::path at = own; at.string().size() + 1 >= root.string().size() && at.has_relative_path();
             at = at.parent_path()) {
            directories.push_back({at / "include"});
            directories.push_back({at});
        }
    const bool withSystem = workspace.System() != nullptr;
    for (const std::string& each : withSystem ? symbols::SystemDirectories() : std::vector<std::string>())
        directories.push_back({each, true});
    return directories;
}

} // namespace

std::vector<std::string> FilesToInclude(const TextPlace& place, const std::string& typed, symbols::Workspace& workspace,
                                        const std::string& path, size_t limit)
{
    std::vector<std::string> files;
    std::set<std::string> seen;
    for (const SearchedDirectory& searched : DirectoriesFor(place, workspace, path)) {
        std::vector<std::string> names;
        std::error_code ignored;
        size_t entries = 0;
        for (const fs::directory_entry& entry : fs::directory_iterator(searched.path / place.directory, ignored)) {
            const std::string name = entry.path().filename().string();
            if (++entries > kMostEntries)
                break;
            if (name.starts_with('.') || !name.starts_with(typed))
                continue;
            if (entry.is_directory(ignored))
                names.push_back(name + "/");
            else if (IsHeader(name, searched.ofSystem))
                names.push_back(name);
        }
        std::ranges::sort(names);
        for (std::string& name : names)
            if (files.size() < limit && seen.insert(name).second)
                files.push_back(std::move(name));
    }
    return files;
}

} // namespace wren
