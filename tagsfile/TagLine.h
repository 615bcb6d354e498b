// A line of a tags file, made of a tag.
#pragma once

#include "tagsfile/Tag.h"
#include "tagsfile/TagFields.h"

#include <string>
#include <string_view>

namespace tagsfile {

// Appends "name<tab>field<tab>line;"<tab>kind<tab>scope<newline>"; the scope is left out when the line would be too
// long with it. False, with nothing appended, when it is too long without.
bool AppendTagLine(std::string& text, const Tag& tag, std::string_view field);
bool HasRoomForScope(const Tag& tag, std::string_view field);

} // namespace tagsfile
