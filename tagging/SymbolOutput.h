// Turns ctags' output with all fields into symbols.
#pragma once

#include "base/TextPool.h"
#include "tagging/ParsedSource.h"

#include <string_view>
#include <vector>

namespace tagging {

// 'output' is ctags' lines for one file (CtagsSettings::Output::Symbols), in any order. The texts are kept in the pool.
// Unreadable lines are skipped: ctags may have died in the middle of one. The kinds of Objective-C are read, too.
//
// ctags' names for unnamed declarations contain a checksum of the file's name, which would be another one for a text in
// memory: it becomes zeros.
//
// Symbols are in ctags' order; isFileLocal is ctags' field "file".
std::vector<Symbol> ReadSymbols(std::string_view output, base::TextPool& texts);

} // namespace tagging
