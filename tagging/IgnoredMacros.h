// The list that -I takes.
#pragma once

#include <set>
#include <string>

namespace tagging {

// As ReadObjectiveC() wants them. Commas or blanks separate the macros; "NAME=" is ignored like "NAME", and
// "NAME=OTHER", which stands for something else, is left to ctags. A list that begins like a path, or with '@', is a
// file with a macro a line; one that cannot be read gives none, and ctags says so.
std::set<std::string> IgnoredMacros(const std::string& list);

// The list for a ctags that runs elsewhere: the file that it names is found from 'directory'.
std::string ListForCtags(const std::string& list, const std::string& directory);

} // namespace tagging
