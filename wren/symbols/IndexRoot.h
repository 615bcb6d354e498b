// Which tree's index answers.
#pragma once

#include "base/Result.h"

#include <string>

namespace wren {

// The root of the index for a source file, an absolute path: that of its project, or of an index that exists above it;
// else its directory. Fails for a file that stands directly in the home directory or "/", since nobody wants all of
// those indexed.
base::Result<std::string> RootForFile(const std::string& path);

// The same for a directory that the user names, which may also be one of those two. Links are resolved.
base::Result<std::string> RootForDirectory(const std::string& directory);

// Whether the directory has an index of its own.
bool HasIndex(const std::string& root);

} // namespace wren
