// Finds Universal Ctags on this machine.
#pragma once

#include "base/Result.h"

#include <optional>
#include <string>

namespace tagging {

// Returned paths are absolute, since the programs run in another directory.

// "ctags-universal", or a "ctags" that says it is Universal Ctags, from $PATH. The error contains a remedy.
base::Result<std::string> FindCtags(const std::string& currentDirectory);

// The program with this path, or with this name in $PATH. Nullopt if none can be run.
std::optional<std::string> FindProgram(const std::string& name, const std::string& currentDirectory);

} // namespace tagging
