#include "wren/cli/WantedSources.h"

#include "base/Identifier.h"

#include <algorithm>
#include <filesystem>
#include <fnmatch.h>
#include <string_view>
#include <system_error>

namespace wren {

namespace {

namespace fs = std::filesystem;

// Whether it means the same in a shell's double quotes as it does here.
bool IsPlainPattern(const std::string& pattern)
{
    return std::ranges::all_of(pattern, [](char c) {
        return base::IsIdentifierCharacter(c) || std::string_view("*?.+-").find(c) != std::string_view::npos;
    });
}

enum class Sort { Source, Other, Unclear };

Sort SortOf(const fs::directory_entry& entry, const std::vector<std::string>& patterns)
{
    const std::string name = entry.path().filename();
    const bool isWanted = std::ranges::any_of(
        patterns, [&](const std::string& pattern) { return ::fnmatch(pattern.c_str(), name.c_str(), 0) == 0; });
    std::error_code unknown;
    if (!isWanted || entry.is_directory(unknown)) // a link to one, too
        return Sort::Other;
    const bool isFile = entry.is_regular_file(unknown); // a link to one, too
    if ((entry.is_symlink(unknown) && !isFile) || entry.path().string().find('\n') != std::string::npos)
        return Sort::Unclear;
    return isFile ? Sort::Source : Sort::Other;
}

} // namespace

std::optional<std::vector<std::string>> WantedSources(const std::string& directory,
                                                      const std::vector<std::string>& patterns)
{
    if (patterns.empty() || !std::ranges::all_of(patterns, IsPlainPattern))
        return std::nullopt;
    std::vector<std::string> sources;
    std::error_code problem;
    fs::recursive_directory_iterator entry(directory, problem);
    for (; !problem && entry != fs::recursive_directory_iterator(); entry.increment(problem)) {
        const Sort sort = SortOf(*entry, patterns);
        if (sort == Sort::Unclear)
            return std::nullopt;
        if (sort == Sort::Source)
            sources.push_back(entry->path());
    }
    if (problem)
        return std::nullopt;
    return sources;
}

} // namespace wren
