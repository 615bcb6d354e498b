// What an update has to do.
#pragma once

#include "base/CancelToken.h"
#include "symbols/store/Snapshot.h"
#include "symbols/update/FoundFile.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace symbols {

struct Changes {
    std::vector<std::string> parse;                                // new files, and those with another content
    std::vector<std::pair<std::string, tagging::FileStamp>> touch; // the same content with another stamp
    std::vector<std::string> remove;

    bool IsEmpty() const { return parse.empty() && touch.empty() && remove.empty(); }
};

// Of all files: what is in the index and was not found is gone. Files are relative to 'root'. Null: an empty index. A
// file whose size is the same is read and compared by its hash, which costs less than a parse.
Changes ChangesOfTree(const Snapshot* before, const std::vector<FoundFile>& found, const std::string& root,
                      const base::CancelToken& cancel);

// Of one file, which was found or not.
void AddChangesOfFile(Changes& changes, const Snapshot& before, const std::string& path,
                      const std::optional<FoundFile>& found, const std::string& root);

} // namespace symbols
