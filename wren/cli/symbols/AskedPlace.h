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

class CurrentIndex;
class CurrentIndexes;

// The file's text counts as it is now, even if the index is older.
class AskedPlace {
public:
    // 'place' is "FILE:LINE[:COLUMN]"; without a column, the first name of the line that is not a keyword. Fails when
    // the file cannot be read or ends before the place. The indexes must outlive the result.
    static base::Result<std::unique_ptr<AskedPlace>> At(const std::string& place, CurrentIndexes& indexes);

    resolve::Resolver Resolver() const;
    resolve::Place Place() const; // borrows the text
    std::string Name() const;     // at the place; "" in a comment, a string or a blank
    const symbols::Workspace& Workspace() const { return workspace; }

private:
    AskedPlace(CurrentIndex& index, const std::string& path, std::string text, size_t offset);

    symbols::Workspace& workspace;
    resolve::ParsedTexts& texts;
    const WorkspaceSources sources;
    const std::string path; // in the index
    const std::string text;
    const size_t offset;
    symbols::SnapshotPointer snapshot;
};

// For the user, when a place has no name.
inline std::string NoNameAt(const std::string& place)
{
    return "there is no name at " + place + ", but a comment, a string, or a blank";
}

} // namespace wren
