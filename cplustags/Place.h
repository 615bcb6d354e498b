// Where a run works.
#pragma once

#include "base/Paths.h"
#include "cplustags/Options.h"

#include <string>

namespace cplustags {

// Absolute paths.
struct Place {
    explicit Place(const Options& options)
        : currentDirectory(base::CurrentDirectory()), target(base::AbsolutePath(options.target, currentDirectory)),
          directory(base::DirectoryOf(target))
    {
    }

    const std::string currentDirectory;
    const std::string target;    // for standard output too: names are written as for a file here
    const std::string directory; // of the target
};

} // namespace cplustags
