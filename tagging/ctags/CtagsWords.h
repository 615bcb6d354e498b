// The part of ctags' command line that all its runs share.
#pragma once

#include "tagging/ctags/CtagsSettings.h"
#include "tagging/ctags/Source.h"

#include <string>
#include <vector>

namespace tagging {

// The program, and the options for the output that is wanted.
std::vector<std::string> CtagsWords(const CtagsSettings& settings, Parser parser);

} // namespace tagging
