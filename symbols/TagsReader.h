// Tags files in the form of an index.
#pragma once

#include "base/CancelToken.h"
#include "symbols/store/Snapshot.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace symbols {

using StampsOfFiles = std::vector<std::pair<std::string, tagging::FileStamp>>;

struct TagsRead {
    SnapshotPointer snapshot;                                  // null without tags
    std::vector<std::pair<std::string, std::string>> problems; // path of a tags file, and a sentence about it
    StampsOfFiles stamps;                                      // of all files, from before they were read
};

StampsOfFiles StampsOf(const std::vector<std::string>& paths); // empty ones of files that are missing

// All tags of the files, of any tool and in any order, as far as their sources are C, C++ or Objective-C. Paths are
// absolute; sources below 'root' ("" for none) get relative ones, as in File::path. A tag without a line gets that of
// the first line that its pattern fits, else the first one. They are held in memory, about half as large as the files,
// and reading them takes twice their size: a file of more than 1 GB is a problem. Blocks.
TagsRead ReadTagsFiles(const std::vector<std::string>& paths, const std::string& root, const base::CancelToken& cancel);

// The tags files that are in use. One thread at a time.
class TagsFiles {
public:
    TagsRead Set(std::vector<std::string> paths, const std::string& root, const base::CancelToken& cancel);
    // Nullopt when the disk has them as they were read. Files whose reading was cancelled are read again.
    std::optional<TagsRead> ReadIfChanged(const std::string& root, const base::CancelToken& cancel);

private:
    std::vector<std::string> paths;
    StampsOfFiles stamps;
};

} // namespace symbols
