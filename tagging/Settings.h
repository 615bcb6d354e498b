// Settings for all files of a run.
#pragma once

#include "tagging/ctags/CtagsSettings.h"

#include <set>
#include <string>

namespace tagging {

struct Settings {
    CtagsSettings ctags;
    std::set<std::string> ignoredMacros; // 'ctags.ignored' for ReadObjectiveC()
    unsigned jobs = 1;                   // concurrent workers, each with its own ctags processes
};

} // namespace tagging
