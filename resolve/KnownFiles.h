// What many questions need to know about the files of an index.
#pragma once

#include "resolve/IncludedFiles.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace resolve {

struct IncludeWalk {
    std::vector<symbols::FileNumber> order; // by steps
    std::unordered_map<symbols::FileNumber, int> steps;
    std::map<std::string, int, std::less<>> stems;            // of the project's headers: "shape" of "x/shape.h"
    std::vector<std::pair<symbols::FileNumber, size_t>> open; // those that were open: hash of their includes
};
using IncludeWalkPointer = std::shared_ptr<const IncludeWalk>;

std::string_view StemOf(std::string_view path); // "shape" of "x/shape.test.h"

using NamedSymbols = std::shared_ptr<const std::vector<symbols::Symbol>>;

struct FileSymbols {
    std::vector<symbols::Symbol> symbols; // of a file, without members
    std::string firsts;                   // first letters of their names, small ones: quick to search
};
using FileSymbolsPointer = std::shared_ptr<const FileSymbols>;

// What questions learn about the files of an index and what the next ones need again: where includes lead to, and what
// included files declare. It is learned again when the index changes. Any thread.
class KnownFiles {
public:
    // From a text with that path and these includes.
    IncludeWalkPointer From(const symbols::Snapshot& snapshot, std::string_view path,
                            const std::vector<symbols::Include>& includes);

    // The texts of symbols belong to the snapshot.
    FileSymbolsPointer SymbolsOf(const symbols::Snapshot& snapshot, symbols::FileNumber file);

    // All symbols with a name, without those of the text at this path. Any 'limits' but the number of results.
    NamedSymbols WithName(const symbols::Snapshot& snapshot, std::string_view path, std::string_view name,
                          symbols::Limits limits);

private:
    class Graph;
    static constexpr size_t kKept = 2; // indexes

    std::shared_ptr<Graph> GraphOf(const symbols::FilesKey& key);

    std::mutex mutex;
    std::vector<std::shared_ptr<Graph>> graphs; // the latest at the end
};

} // namespace resolve
