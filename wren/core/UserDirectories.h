// The directories of the user's configuration and state (XDG base directory specification).
#pragma once

#include <string>
#include <sys/statvfs.h>

namespace wren {

// Without a trailing "/"; "" when neither the variable nor a home is set. They may not exist yet.
std::string ConfigDirectory(); // $XDG_CONFIG_HOME/wren, or ~/.config/wren
std::string StateDirectory();  // $XDG_STATE_HOME/wren, or ~/.local/state/wren

// Makes the directory and its missing parents, accessible only to the user. False, with the path and the reason in
// '*error'.
bool MakeUserDirectory(const std::string& directory, std::string* error);

// Why nothing can be written below the directory, with a remedy, in sentences. "" when no problem is found, or the
// directory just does not exist yet. Checks the current state: the cause may be fixed by now. 'diskState' reads the
// state of the file system.
std::string AdviceAbout(const std::string& directory,
                        int (*diskState)(const char* path, struct statvfs* state) = &::statvfs);

} // namespace wren
