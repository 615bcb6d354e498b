// How far files are from one file: what it includes, and what is near it.
#pragma once

#include "resolve/IncludedFiles.h"
#include "resolve/KnownFiles.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace resolve {

class Distances {
public:
    // 'path' and 'includes' are those of the file that counts; all must outlive it but the includes.
    Distances(const symbols::Snapshot& snapshot, std::string_view path, std::vector<symbols::Include> includes,
              KnownFiles& known);

    // Steps of includes, twice; odd for a source that belongs to such a header.
    static constexpr int kOwn = 0;
    static constexpr int kUnrelated = 1000; // from here on: only the directories count
    static constexpr int kSystem = 2000;

    int Of(symbols::FileNumber file);
    bool IsHeader(symbols::FileNumber file);
    const symbols::File& FileOf(symbols::FileNumber file);

    // Files that the file includes, by steps.
    const std::vector<symbols::FileNumber>& Included() { return Walk().order; }

    IncludedFiles& Files() { return files; }

private:
    const IncludeWalk& Walk();
    int Measure(const symbols::File& file);

    const symbols::Snapshot& snapshot;
    const std::string_view path;
    std::vector<symbols::Include> includes;
    IncludedFiles files;
    KnownFiles& shared;
    IncludeWalkPointer walk; // null until it is needed
    std::unordered_map<symbols::FileNumber, int> measured;
    std::unordered_map<symbols::FileNumber, symbols::File> known;
};

} // namespace resolve
