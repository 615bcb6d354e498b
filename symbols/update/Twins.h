// Files that several paths lead to.
#pragma once

#include "symbols/update/FoundFile.h"

#include <set>
#include <string>
#include <vector>

namespace symbols {

// Keeps one path of each file, and returns all paths of files that have several. 'files' are in the order of paths.
std::set<std::string> RemoveTwins(std::vector<FoundFile>& files);

} // namespace symbols
