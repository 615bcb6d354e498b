// Writes a tag as a line of a tags file.
#pragma once

#include "tagsfile/Tag.h"
#include "tagsfile/TagFields.h"

#include <string>
#include <string_view>

namespace tagsfile {

// Appends "name<tab>field<tab>line;"<tab>kind<tab>scope<newline>", without the scope if the line would be too long with
// it. False, with nothing appended, when the line is too long even without it.
bool AppendTagLine(std::string& text, const Tag& tag, std::string_view field);
bool HasRoomForScope(const Tag& tag, std::string_view field);

} // namespace tagsfile
