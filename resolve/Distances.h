// How far files are from one file: what it includes, and what is near it.
#pragma once

#include "symbols/store/Snapshot.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace resolve {

// Which file an #include means. There are no include paths: the includer's own directory, then the path that ends in
// the whole name and is nearest to the includer, then one that ends in the last part.
class IncludedFiles {
public:
    explicit IncludedFiles(const symbols::Snapshot& snapshot) : snapshot(snapshot) {}

    // Best first; those that only share the last part of the name are left out when others fit better.
    std::vector<symbols::FileNumber> Find(std::string_view includer, const symbols::Include& include);

private:
    struct Found {
        symbols::FileNumber file = 0;
        std::string_view path;
        bool isSystem = false;
    };
    const std::vector<Found>& WithLeaf(std::string_view leaf);

    const symbols::Snapshot& snapshot;
    std::map<std::string, std::vector<Found>, std::less<>> byLeaf;
};

class Distances {
public:
    // 'path' and 'includes' are those of the file that counts; both snapshot and path must outlive it.
    Distances(const symbols::Snapshot& snapshot, std::string_view path, std::vector<symbols::Include> includes);

    // Steps of includes, twice; odd for a source that belongs to such a header.
    static constexpr int kOwn = 0;
    static constexpr int kUnrelated = 1000; // from here on: only the directories count
    static constexpr int kSystem = 2000;

    int Of(symbols::FileNumber file);
    bool IsHeader(symbols::FileNumber file);
    const symbols::File& FileOf(symbols::FileNumber file);

    // Files that the file includes, by steps.
    const std::vector<symbols::FileNumber>& Included();

    IncludedFiles& Files() { return files; }

private:
    void Walk();
    void Visit(std::string_view includer, const std::vector<symbols::Include>& includes, int steps);
    int Measure(const symbols::File& file);

    const symbols::Snapshot& snapshot;
    const std::string_view path;
    std::vector<symbols::Include> includes;
    IncludedFiles files;
    bool walked = false;
    std::vector<symbols::FileNumber> order;
    std::unordered_map<symbols::FileNumber, int> steps;
    std::map<std::string, int, std::less<>> stems; // of headers: "shape" of "x/shape.h"
    std::unordered_map<symbols::FileNumber, int> measured;
    std::unordered_map<symbols::FileNumber, symbols::File> known;
};

// Of paths.
std::string_view FileLeaf(std::string_view path);
std::string_view DirectoryOf(std::string_view path);
bool IsHeaderPath(std::string_view path);
size_t CommonDirectories(std::string_view a, std::string_view b);

} // namespace resolve
