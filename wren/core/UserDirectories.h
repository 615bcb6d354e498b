// Where the user's configuration and state are kept (the XDG base directory specification).
#pragma once

#include <string>
#include <sys/statvfs.h>

namespace wren {

// Without a trailing "/"; "" when there is neither the variable nor a home. Nobody made them yet.
std::string ConfigDirectory(); // $XDG_CONFIG_HOME/wren, or ~/.config/wren
std::string StateDirectory();  // $XDG_STATE_HOME/wren, or ~/.local/state/wren

// Makes the directory and those above it, for the user alone, where they are not there yet. False, with the path and
// the reason in '*error'.
bool MakeUserDirectory(const std::string& directory, std::string* error);

// Why nothing can be written below the directory, and what the user can do about it, in sentences; "" when nothing is
// seen to be wrong with it, or only that it is not there yet. Looks at it now: what failed may have been put right
// meanwhile. 'diskState' is what tells of the file system.
std::string AdviceAbout(const std::string& directory,
                        int (*diskState)(const char* path, struct statvfs* state) = &::statvfs);

} // namespace wren
