// The sources that a run of the tags program tags.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wren {

// Plain files at and below 'directory' whose names match one of the patterns, as absolute paths, as find lists them:
// links to directories are not followed. Nullopt when the tags program would read one that has other names as well (a
// link), or that no list can hold, when a directory cannot be read, or when a pattern is more than a pattern.
std::optional<std::vector<std::string>> WantedSources(const std::string& directory,
                                                      const std::vector<std::string>& patterns);

} // namespace wren
