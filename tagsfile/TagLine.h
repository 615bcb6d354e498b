// A line of a tags file, and the file names in it.
#pragma once

#include "tagsfile/Tag.h"
#include "tagsfile/TagFields.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tagsfile {

// How a file is written in a tags file that is in 'directory' (absolute, without "/" at its end): relative to it when
// the file is below, so that the two can move together, else absolute. A backslash gets another. Nothing when the field
// would have a tab or a line break in it, which no reader could tell from the end of the field. 'path' is absolute.
std::optional<std::string> FileField(std::string_view path, std::string_view directory);

// Appends "name<tab>field<tab>line;"<tab>kind<tab>scope<newline>"; the scope is left out when the line would be too
// long with it. False, with nothing appended, when it is too long without.
bool AppendTagLine(std::string& text, const Tag& tag, std::string_view field);
bool HasRoomForScope(const Tag& tag, std::string_view field);

} // namespace tagsfile
