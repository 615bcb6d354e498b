// Names by which ctags can open a source.
#pragma once

#include "tagging/ctags/Source.h"

#include <string>
#include <string_view>

namespace tagging {

// Whether ctags can be given the name: it reads one per line, and strips blanks at its end.
bool ReadsName(const std::string& name);

// Relative to the directory in which ctags runs if the file is below it, since that directory's own name may not fit
// into a line. Begins with "./", since ctags also reads options from the list.
std::string NameForCtags(const std::string& path, const std::string& directory);

// Puts the text into a file in memory that ctags, another process, opens by the source's name. False, with errno, when
// the system refuses it.
bool PutInMemory(std::string_view text, Source& source);

} // namespace tagging
