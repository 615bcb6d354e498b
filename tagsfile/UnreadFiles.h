// Tags files that are not read, since to read them would take for ever and yield nothing.
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

namespace tagsfile {

// Why the open tags file of that size is not read, as the rest of a sentence about it; nothing for one that is. Smaller
// ones than a gigabyte always are. Leaves the file's position alone. Any thread.
//
// It is not read when holes are most of it, nor when it is more than twice as long as it says that it was when it was
// made: tags that somebody has added since are not as many as that.
std::optional<std::string> WhyUnread(int descriptor, off_t size);

} // namespace tagsfile
