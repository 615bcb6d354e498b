// Finds programs as a shell does.
#pragma once

#include <optional>
#include <string>

namespace base {

// The program with this path, or with this name in $PATH, but never one of the current directory that $PATH names by an
// empty entry. The path is absolute, since programs run in other directories. Nullopt if none can be run. Any thread.
std::optional<std::string> FindProgram(const std::string& name, const std::string& currentDirectory);

} // namespace base
