// The list of macros for -I.
#pragma once

#include <set>
#include <string>

namespace tagging {

// The macros for ReadObjectiveC(). Commas or blanks separate them. "NAME=" is ignored like "NAME"; "NAME=OTHER", a
// replacement, is left to ctags. A list that begins like a path, or with '@', is a file with one macro per line. An
// unreadable file yields none, and ctags reports it.
std::set<std::string> IgnoredMacros(const std::string& list);

// The list for a ctags that runs elsewhere: the name of a file in it is relative to 'directory'.
std::string ListForCtags(const std::string& list, const std::string& directory);

} // namespace tagging
