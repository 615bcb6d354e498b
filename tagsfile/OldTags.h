// A tags file that is there already, and what of it stays.
#pragma once

#include "tagsfile/LineSource.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tagsfile {

// The lines of an old tags file that stay: not its pseudo-tags, and none of a file that 'goes' is true for; it is asked
// once a file field. Lines that are too long for readers lose their last fields or, when that does not help, do not
// stay. A file that is not sorted is sorted in memory first. Null when the file cannot be read; then errno tells why.
// When that happens later, Next() throws std::system_error: old tags must not get lost unnoticed.
std::unique_ptr<LineSource> LinesThatStay(const std::string& path, std::function<bool(std::string_view field)> goes);

} // namespace tagsfile
