// Finds Universal Ctags on this machine.
#pragma once

#include "base/Result.h"

#include <string>

namespace tagging {

// "ctags-universal", or a "ctags" that says it is Universal Ctags, from $PATH; an absolute path. The error contains a
// remedy.
base::Result<std::string> FindCtags(const std::string& currentDirectory);

} // namespace tagging
