// Where the user's files are kept (the XDG base directory specification). The environment is read at each call.
#pragma once

#include <string>

namespace base {

// $HOME with exactly one "/" at its end; "" when it is unset or empty. Any thread.
std::string Home();

// A program's own directory among the user's, without a trailing "/"; "" when there is neither the variable nor a home.
// Nobody made it yet.
std::string ConfigDirectory(const std::string& program); // in $XDG_CONFIG_HOME, or ~/.config
std::string StateDirectory(const std::string& program);  // in $XDG_STATE_HOME, or ~/.local/state
std::string CacheDirectory(const std::string& program);  // in $XDG_CACHE_HOME, or ~/.cache

} // namespace base
