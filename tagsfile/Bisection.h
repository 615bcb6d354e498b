// Finds a place in a tags file that is in order, without reading what comes before it.
#pragma once

#include <optional>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// The offset at which to begin reading the open file so as to see all lines that begin with 'start', which must not be
// empty. A line begins there, at most a few thousand bytes before the first such line or its place. 'first' and 'size'
// are the offsets of the first line in order (see NameOrder) and of the file's end. Keeps the file's position.
//
// Nullopt when the file is out of order, shorter, or cannot be read. The search looks at a handful of lines only; that
// these are in order proves nothing about the others.
std::optional<off_t> PlaceOfLines(int descriptor, off_t first, off_t size, std::string_view start);

} // namespace tagsfile
