// Finds a place in a tags file whose names are in order without reading what is in front of it.
#pragma once

#include <optional>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// Where in the open file reading has to begin so as to meet all lines that begin with 'start', which is not empty: at a
// line a few thousand bytes in front of the first such line, or of where it would stand. 'first' and 'size' are the
// offsets of the first line that is in order (see NameOrder) and of the file's end. Leaves the file's position alone.
//
// Nothing when the file turns out not to be in order, or shorter, or cannot be read. What is looked at for the search
// is a handful of lines: that they are in order does not say that the others are.
std::optional<off_t> PlaceOfLines(int descriptor, off_t first, off_t size, std::string_view start);

} // namespace tagsfile
