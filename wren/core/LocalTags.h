// Which tags file serves a directory.
#pragma once

#include <optional>
#include <string>

namespace wren {

// The path of what is called "tags" in the directory or in the nearest one above it, as the plug-in searches: even a
// directory of that name ends the search, and reads as tags without a symbol. Follows no link at the name itself.
// 'directory' is absolute, or "" for none.
std::optional<std::string> FindLocalTags(const std::string& directory);

// 'home' shortened to "~/", for people; see Home().
std::string WithTilde(const std::string& path, const std::string& home);

} // namespace wren
