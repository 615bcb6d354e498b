// Reads an existing tags file, and selects what stays of it.
#pragma once

#include "tagsfile/LineSource.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tagsfile {

// The lines of an old tags file that stay: no pseudo-tags, and no lines of files for which 'goes' is true. 'goes' is
// called once for each file field. Lines that are too long for readers lose their last fields, or are dropped if that
// is not enough. An unsorted file is sorted in memory first. Null, with errno, when the file cannot be read. If that
// fails later, Next() throws std::system_error: old tags must not get lost unnoticed.
std::unique_ptr<LineSource> LinesThatStay(const std::string& path, std::function<bool(std::string_view field)> goes);

} // namespace tagsfile
