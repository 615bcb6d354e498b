// The fields of a line of a tags file: "name<tab>file<tab>address", and after the address ;"<tab> and more fields.
//
// The format is that of ctags (its manual page tags(5)). Views are valid as long as the line. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tagsfile {

// Bytes of a line, including its line break. Readers split a longer line into pieces of this size, each of them a line;
// writers drop what does not fit.
inline constexpr size_t kLongestLine = 1023;

// Follows the address in lines with more fields, and nowhere else.
inline constexpr std::string_view kExtensionSign = ";\"";

std::string_view NameOfLine(std::string_view line);

// The file field; nullopt for pseudo-tags and for lines that are not tags.
std::optional<std::string_view> FieldOfLine(std::string_view line);

// What follows the address (a line number, a search pattern, or both); nullopt when the line is not a tag.
std::optional<std::string_view> AfterAddressOfLine(std::string_view line);

// The absolute path of a file field. 'directory' is that of the tags file, without a trailing "/".
std::string PathOfField(std::string_view field, std::string_view directory);

// The file field for 'path' (absolute) in a tags file in 'directory' (absolute, without a trailing "/"). It is relative
// if the file is below, so that the two can move together, otherwise absolute. Backslashes are doubled. Nullopt when
// the field would contain a tab or a line break, which readers take for the end of the field.
std::optional<std::string> FileField(std::string_view path, std::string_view directory);

} // namespace tagsfile
