// What --totals says at the end.
#pragma once

#include "tagging/TagStore.h"
#include "tagging/TaggingRun.h"
#include "tagsfile/TagsWriter.h"

#include <cstddef>
#include <functional>
#include <string>

namespace cplustags {

// "3 files, 120 tags, 0.1 s; 1 file crashed ctags, 2 took too long": what was done, and behind the semicolon what could
// not be. 'unnameable' are files whose names no line of a tags file can hold; 'inFile' is what the tags file has now,
// which is said when there is more in it.
std::string SummaryText(const tagging::TaggingCounts& counts, size_t unnameable, const tagsfile::TagsCount& inFile,
                        double seconds);

// "3 tags are left out, since no reader takes lines that long: 2 of /p/a.c, 1 of /p/b.c": for the files with the most
// of them, and how many more files there are. 'name' is what a file is called in messages.
std::string TooLongText(const tagging::TagsByFile& tooLong, const std::function<std::string(unsigned file)>& name);

} // namespace cplustags
