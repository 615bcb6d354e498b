// The sources that a run of the tags program tags.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wren {

// Plain files, and links to such files, at and below 'directory' whose names match one of the patterns, as absolute
// paths, as find lists them: links to directories are not followed. Nullopt when the tags program would report one (a
// link to nothing), when no list can hold its name, when a directory cannot be read, or when a pattern is more than a
// pattern.
std::optional<std::vector<std::string>> WantedSources(const std::string& directory,
                                                      const std::vector<std::string>& patterns);

} // namespace wren
