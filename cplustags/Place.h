// The paths of a run.
#pragma once

#include "base/Paths.h"
#include "cplustags/Options.h"

#include <string>

namespace cplustags {

// All are absolute.
struct Place {
    explicit Place(const Options& options)
        : currentDirectory(base::CurrentDirectory()), target(base::AbsolutePath(options.target, currentDirectory)),
          directory(base::DirectoryOf(target))
    {
    }

    const std::string currentDirectory;
    const std::string target;    // also for standard output: file names are written as for a file here
    const std::string directory; // of the target
};

} // namespace cplustags
