// Writes a tags file from an index.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/store/Snapshot.h"

#include <cstddef>
#include <functional>
#include <string>

namespace symbols {

struct TagsFileOptions {
    std::string target;                     // absolute
    std::string root;                       // absolute: files of the snapshot are relative to it
    bool prototypes = true;                 // tags of prototypes, too
    std::string version;                    // of the tags program, for the head of the file
    unsigned jobs = 1;                      // threads
    std::function<bool(const File&)> wants; // whether the tags file covers the file; null for all. One thread
};

struct TagsFileCount {
    size_t files = 0; // covered
    size_t tags = 0;
    size_t tooLong = 0;    // tags that fit into no line
    size_t unnameable = 0; // files whose names a tags file cannot hold
};

// The file is the same, byte by byte, as the tags program makes from the wanted files. It takes the old one's place at
// the end; the old one is unchanged after an error, and when the work is cancelled, which is an error here. A target
// that is a link, or not a tags file, is refused. Blocks.
base::Result<TagsFileCount> WriteTagsFile(const Snapshot& snapshot, const TagsFileOptions& options,
                                          const base::CancelToken& cancel);

} // namespace symbols
