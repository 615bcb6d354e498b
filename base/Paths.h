// File names: as absolute paths, and as text for messages.
#pragma once

#include <string>
#include <string_view>

namespace base {

// The current directory as the user sees it: $PWD with its links, if that names it. Names that a command makes from
// $PWD then agree with names relative to it.
std::string CurrentDirectory();

// 'name' relative to 'directory', without empty and "." parts. A ".." and the part before it are removed only when the
// result is the same file: behind a link, ".." is elsewhere.
std::string AbsolutePath(std::string_view name, std::string_view directory);

// The directory of an absolute path, without a trailing "/".
std::string DirectoryOf(std::string_view path);

// For a one-line message: escapes control characters and omits the middle of a very long text. Control characters
// include U+0080 to U+009f, and the same values as bytes that are not UTF-8. All other bytes stay.
std::string Shown(std::string_view text);

// The same for another program's output: keeps line breaks and omits nothing.
std::string ShownLines(std::string_view text);

} // namespace base
