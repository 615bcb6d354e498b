// The summary for --totals.
#pragma once

#include "tagging/TagStore.h"
#include "tagging/TaggingRun.h"
#include "tagsfile/TagsWriter.h"

#include <cstddef>
#include <functional>
#include <string>

namespace cplustags {

// "3 files, 120 tags, 0.1 s; 1 file crashed ctags, 2 took too long": results, and the losses after the semicolon.
// 'unnameable' are files whose names do not fit into a tags file. 'inFile' are the contents of the tags file, which the
// text includes if there is more in it.
std::string SummaryText(const tagging::TaggingCounts& counts, size_t unnameable, const tagsfile::TagsCount& inFile,
                        double seconds);

// "3 tags are left out, since readers reject lines that long: 2 of /p/a.c, 1 of /p/b.c". Names the files with the most
// of them, and the number of other files. 'name' returns a file's name for messages.
std::string TooLongText(const tagging::TagsByFile& tooLong, const std::function<std::string(unsigned file)>& name);

} // namespace cplustags
