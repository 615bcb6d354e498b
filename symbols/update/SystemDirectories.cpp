#include "symbols/update/SystemDirectories.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

namespace symbols {

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> DirectoriesIn(const fs::path& directory)
{
    std::vector<fs::path> found;
    std::error_code problem;
    for (fs::directory_iterator entry(directory, problem), end; !problem && entry != end; entry.increment(problem))
        if (std::error_code ignored; entry->is_directory(ignored) && !entry->is_symlink(ignored))
            found.push_back(entry->path());
    return found;
}

// "/usr/lib/gcc/MACHINE/12/include", where 12 is the highest number.
std::optional<fs::path> NewestIn(const fs::path& machine)
{
    std::optional<fs::path> newest;
    long highest = -1;
    for (const fs::path& version : DirectoriesIn(machine)) {
        const long number = std::strtol(version.filename().c_str(), nullptr, 10);
        std::error_code problem;
        if (number > highest && fs::is_directory(version / "include", problem)) {
            highest = number;
            newest = version / "include";
        }
    }
    return newest;
}

} // namespace

std::vector<std::string> SystemDirectories()
{
    std::vector<std::string> found;
    for (const char* each : {"/usr/include", "/usr/local/include"})
        if (std::error_code problem; fs::is_directory(each, problem))
            found.emplace_back(each);
    for (const fs::path& machine : DirectoriesIn("/usr/lib/gcc"))
        if (const std::optional<fs::path> newest = NewestIn(machine))
            found.push_back(*newest);
    return found;
}

} // namespace symbols
