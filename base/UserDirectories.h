// The directories of the user's files (XDG base directory specification). Each call reads the environment.
#pragma once

#include <string>

namespace base {

// $HOME with exactly one trailing "/"; "" when it is unset or empty. Any thread.
std::string Home();

// A program's directory, without a trailing "/"; "" when neither the variable nor $HOME is set. It may not exist yet.
std::string ConfigDirectory(const std::string& program); // in $XDG_CONFIG_HOME, or ~/.config
std::string StateDirectory(const std::string& program);  // in $XDG_STATE_HOME, or ~/.local/state
std::string CacheDirectory(const std::string& program);  // in $XDG_CACHE_HOME, or ~/.cache

} // namespace base
