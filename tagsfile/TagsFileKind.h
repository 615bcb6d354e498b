// Whether a file is a tags file, or somebody's own that only has the name of one.
#pragma once

#include <string>

namespace tagsfile {

enum class Target {
    Absent,
    Tags,       // a tags file, or an empty file
    Foreign,    // something else, which must not be overwritten: another kind of file, a directory, a device
    Unreadable, // errno says why
};

// What stands at the path, links followed. Reads the first lines only, and never waits. Any thread.
//
// The pseudo-tags of ctags, and the sign behind the address of a tag with fields, are in no other file. A line of the
// oldest format looks like a row of any table with three columns; such a file counts when all its first lines are of
// that form and one of them names a file that exists.
Target WhatIs(const std::string& path);

} // namespace tagsfile
