// When a file may have changed unnoticed.
#pragma once

#include "tagging/FileStamp.h"

namespace symbols {

// The stamp to remember for a file that has just been read. Another change within about two seconds could leave size
// and time as they are, since times are coarser than they look. For a file as young as that, the result equals no
// file's stamp: the next update compares the content.
tagging::FileStamp StampToKeep(const tagging::FileStamp& stamp);

bool IsYoung(const tagging::FileStamp& stamp);

} // namespace symbols
