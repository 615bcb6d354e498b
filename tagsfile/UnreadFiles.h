// Tags files that are not read, since that would take very long and yield nothing.
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

namespace tagsfile {

// Why the open tags file of that size is not read, as the end of a sentence about it; nullopt if it is read. Files
// below a gigabyte are always read. Keeps the file's position. Any thread.
//
// A file is not read when most of it is holes, or when it is more than twice as long as its pseudo-tag says. No tool
// adds that many tags.
std::optional<std::string> WhyUnread(int descriptor, off_t size);

} // namespace tagsfile
