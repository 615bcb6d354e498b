// Problems of a directory's tags files, with the remedy, for the user.
#pragma once

#include <string>
#include <vector>

namespace wren {

// Why the tags that serve 'directory' may have found nothing: a tags file that is a directory, cannot be read, is
// empty, or was made with options that hide its tags. One sentence each; empty without a problem.
std::vector<std::string> ProblemsWithTags(const std::string& directory);

// The message for a directory that no tags file serves.
std::string RemedyForNoTags(const std::string& directory);

} // namespace wren
