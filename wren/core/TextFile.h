// Writes whole files without losing the old text.
#pragma once

#include "wren/core/DiskSteps.h"

#include <string>
#include <string_view>

namespace wren {

// Writes a temporary beside the file and renames it, so that a crash, a full disk or a missing permission leaves the
// old file complete. Keeps the file's permissions and owner; a link stays a link, and its target is written.
//
// Some files are written in place: one with several hard links, one in a directory without write permission, and one
// whose owner the user may not set. A copy is put on the disk first (OverwrittenCopy); LeftOverwritten() offers the old
// text if the write is cut short. A file without write permission stays unchanged, even if its directory would allow a
// replacement.
//
// Removes temporaries that killed processes left. False, with the path and the reason in '*error'. Any thread.
bool WriteWholeFile(const std::string& path, std::string_view text, std::string* error, const DiskSteps& steps = {});

} // namespace wren
