// The Universal Ctags of this machine.
#pragma once

#include "base/Result.h"

#include <optional>
#include <string>

namespace tagging {

// Programs have absolute paths, since they are run from another directory.

// "ctags-universal", or a "ctags" that says it is Universal Ctags, from $PATH. The error says what to do about it.
base::Result<std::string> FindCtags(const std::string& currentDirectory);

// The program that is meant by a path, or by a name that is looked for in $PATH. Nothing when none can be run.
std::optional<std::string> FindProgram(const std::string& name, const std::string& currentDirectory);

} // namespace tagging
