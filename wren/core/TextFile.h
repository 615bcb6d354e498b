// Reading and writing whole files without ever losing one.
#pragma once

#include "wren/core/DiskSteps.h"

#include <string>
#include <string_view>

namespace wren {

// Writes a temporary beside the file and renames it, so that a crash, a full disk or a missing right leaves the old
// file whole. Keeps the file's permissions and its owner; a link stays one, and its target is written. A file with
// several hard links, one in a directory that nobody may write to, and one whose owner the user may not give to another
// file, is written in place: after a copy of it was put on the disk (OverwrittenCopy), from which LeftOverwritten()
// offers the old text if the writing is cut short. A file that the user may not write to stays as it is, though the
// directory would allow its replacement. Removes what killed processes have left of such temporaries. False, with the
// path and the reason in '*error'. Any thread.
bool WriteWholeFile(const std::string& path, std::string_view text, std::string* error, const DiskSteps& steps = {});

} // namespace wren
