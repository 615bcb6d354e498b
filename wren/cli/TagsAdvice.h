// What keeps a directory's tags files from answering, and the remedy, in words for the user.
#pragma once

#include <string>
#include <vector>

namespace wren {

// Why the tags that serve 'directory' may have found nothing: a tags file that is a directory, cannot be read, is
// empty, or was made with options that hide its tags. One sentence each; empty when all seems well.
std::vector<std::string> ProblemsWithTags(const std::string& directory);

// What to do when no tags file serves 'directory'.
std::string RemedyForNoTags(const std::string& directory);

} // namespace wren
