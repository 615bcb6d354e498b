// The Universal Ctags of this machine.
#pragma once

#include <string>

namespace cplustags {

// The program to run: 'chosen' when it is not empty, else "ctags-universal" or a "ctags" that says it is Universal
// Ctags, from $PATH. An absolute path, since it is run from another directory. "" when there is none, and '*error' says
// what to do about it.
std::string FindCtags(const std::string& chosen, const std::string& currentDirectory, std::string* error);

} // namespace cplustags
