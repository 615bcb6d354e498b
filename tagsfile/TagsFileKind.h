// Tells tags files from other files with such a name.
#pragma once

#include <string>

namespace tagsfile {

enum class Target {
    Absent,
    Tags,       // a tags file, or an empty file
    Foreign,    // anything else, which must not be overwritten: another kind of file, a directory, a device
    Unreadable, // errno says why
};

// The kind of the file at the path; follows links. Reads the first lines only, and never blocks. Any thread.
//
// Only tags files have ctags' pseudo-tags, or the sign after the address of a tag with fields. A line of the oldest
// format looks like a row of any table with three columns. Such a file counts if all its first lines have that form and
// one of them names an existing file.
Target WhatIs(const std::string& path);

// Whether the first lines name this system's tags program as the one that has made the file. Follows no link.
bool IsFromOurProgram(const std::string& path);

} // namespace tagsfile
