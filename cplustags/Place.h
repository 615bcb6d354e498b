// Where a run works.
#pragma once

#include "cplustags/Options.h"
#include "cplustags/Paths.h"

#include <string>

namespace cplustags {

// Absolute paths.
struct Place {
    explicit Place(const Options& options)
        : currentDirectory(CurrentDirectory()), target(AbsolutePath(options.target, currentDirectory)),
          directory(DirectoryOf(target))
    {
    }

    const std::string currentDirectory;
    const std::string target;    // for standard output too: names are written as for a file here
    const std::string directory; // of the target
};

} // namespace cplustags
