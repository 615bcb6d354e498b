// Where the user's configuration and state are kept (the XDG base directory specification).
#pragma once

#include <string>

namespace wren {

// Without a trailing "/"; "" when there is neither the variable nor a home. Nobody made them yet.
std::string ConfigDirectory(); // $XDG_CONFIG_HOME/wren, or ~/.config/wren
std::string StateDirectory();  // $XDG_STATE_HOME/wren, or ~/.local/state/wren

// Makes the directory and those above it, for the user alone, where they are not there yet. False, with the path and the
// reason in '*error'.
bool MakeUserDirectory(const std::string& directory, std::string* error);

} // namespace wren
