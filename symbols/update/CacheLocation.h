// Where the files of an index are.
#pragma once

#include "base/Result.h"

#include <string>

namespace symbols {

// The directory for the index of 'root' in 'cache', the directory of all indexes. Roots with the same last part have
// different ones.
std::string DirectoryOfIndex(const std::string& cache, const std::string& root, bool isSystem);

// The user's directory of all indexes; "" when the user has no cache directory.
std::string UsersIndexes();

// Makes the directory and those above it, for this user only. Fails when it belongs to another user, who could put
// something else into it.
base::Result<void> MakePrivateDirectory(const std::string& path);

} // namespace symbols
