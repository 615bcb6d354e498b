// The fields of a line of a tags file: "name<tab>file<tab>address", and behind the address ;"<tab> and more fields.
//
// The format is that of ctags (its manual page tags(5)). Views are valid as long as the line is. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tagsfile {

// Bytes of a line, its line break included. Readers take a longer one in pieces of this many, each of them a line;
// writers leave out what does not fit.
inline constexpr size_t kLongestLine = 1023;

// What follows the address in lines that have more fields, and nothing else has.
inline constexpr std::string_view kExtensionSign = ";\"";

std::string_view NameOfLine(std::string_view line);

// The file field; nothing for pseudo-tags and for lines that are not tags.
std::optional<std::string_view> FieldOfLine(std::string_view line);

// What follows the address, which is a line number, a search pattern, or both; nothing when the line is not a tag.
std::optional<std::string_view> AfterAddressOfLine(std::string_view line);

// The absolute path that a file field stands for; 'directory' is that of the tags file, without "/" at its end.
std::string PathOfField(std::string_view field, std::string_view directory);

// How a file is written in a tags file that is in 'directory' (absolute, without "/" at its end): relative to it when
// the file is below, so that the two can move together, else absolute. A backslash gets another. Nothing when the field
// would have a tab or a line break in it, which no reader could tell from the end of the field. 'path' is absolute.
std::optional<std::string> FileField(std::string_view path, std::string_view directory);

} // namespace tagsfile
