// The command line of ctags, as far as all its runs have it in common.
#pragma once

#include "cplustags/CtagsSettings.h"
#include "cplustags/Source.h"

#include <string>
#include <vector>

namespace cplustags {

// The program, and the options that make it write what ReadCtagsOutput reads.
std::vector<std::string> CtagsWords(const CtagsSettings& settings, Parser parser);

} // namespace cplustags
