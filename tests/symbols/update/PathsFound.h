// What a walk finds, as a list for comparisons.
#pragma once

#include "symbols/update/Walk.h"

#include <string>
#include <vector>

namespace symbols {

inline std::vector<std::string> PathsOf(const Walked& walked)
{
    std::vector<std::string> paths;
    for (const FoundFile& file : walked.files)
        paths.push_back(file.path);
    return paths;
}

// The reason when it has failed.
inline std::vector<std::string> PathsOf(const base::Result<Walked>& walked)
{
    return walked ? PathsOf(*walked) : std::vector{walked.Failure().Message()};
}

inline std::vector<std::string> PathsIn(const std::string& root)
{
    const base::CancelToken cancel;
    return PathsOf(Walk({root, {root}}, cancel));
}

} // namespace symbols
