// A place in a source, with all that answers a question about it.
#pragma once

#include "base/Result.h"
#include "resolve/Resolver.h"
#include "symbols/Workspace.h"
#include "wren/symbols/WorkspaceSources.h"

#include <cstddef>
#include <memory>
#include <string>

namespace wren {

class CurrentIndexes;

// The file's text counts as it is now, even if the index is older.
class AskedPlace {
public:
    // 'place' is "FILE:LINE[:COLUMN]"; without a column, the first identifier of the line. Fails when the file cannot
    // be read or ends before the place. The indexes must outlive the result.
    static base::Result<std::unique_ptr<AskedPlace>> At(const std::string& place, CurrentIndexes& indexes);

    resolve::Resolver Resolver() const;
    resolve::Place Place() const; // borrows the text
    const symbols::Workspace& Workspace() const { return workspace; }

private:
    AskedPlace(symbols::Workspace& workspace, const std::string& path, std::string text, size_t offset);

    symbols::Workspace& workspace;
    const WorkspaceSources sources;
    const std::string path; // in the index
    const std::string text;
    const size_t offset;
    symbols::SnapshotPointer snapshot;
};

} // namespace wren
