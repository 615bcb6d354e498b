// Names of files: as absolute paths, and as text for messages.
#pragma once

#include <string>
#include <string_view>

namespace base {

// The current directory, as the user sees it: $PWD when that names it, with the links on the way. Names that a command
// makes from $PWD and names relative to it then agree.
std::string CurrentDirectory();

// 'name' from 'directory', without empty and "." parts. A ".." and the part before it go only when the result is the
// same file, since behind a link ".." is elsewhere.
std::string AbsolutePath(std::string_view name, std::string_view directory);

// The directory of an absolute path, without "/" at its end.
std::string DirectoryOf(std::string_view path);

// For a message of one line: control characters as escapes, the middle of a very long text left out. Control characters
// are those from U+0080 to U+009f too, and the same as bytes that are no UTF-8; all other bytes stay.
std::string Shown(std::string_view text);

// The same for what another program has said: line breaks stay, and nothing is left out.
std::string ShownLines(std::string_view text);

} // namespace base
