// The command line of ctags, as far as all its runs have it in common.
#pragma once

#include "tagging/ctags/CtagsSettings.h"
#include "tagging/ctags/Source.h"

#include <string>
#include <vector>

namespace tagging {

// The program, and the options that make it write what ReadCtagsOutput reads.
std::vector<std::string> CtagsWords(const CtagsSettings& settings, Parser parser);

} // namespace tagging
