// Several indexes, files beside them and open texts as one, kept while texts change.
#pragma once

#include "symbols/store/Store.h"
#include "symbols/store/View.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace symbols {

// Null snapshots count as empty.
struct Layers {
    SnapshotPointer project;
    SnapshotPointer system; // its files get absolute paths: 'systemRoot' is put in front
    std::string systemRoot = "/";
    // What was read beside the indexes, with paths as in File::path: it counts until an index has the file.
    SnapshotPointer read;
    SnapshotPointer readOfSystem;
    // Where tags files say symbols are. What anything above has of the same name in the same file counts instead.
    SnapshotPointer tags;

    bool operator==(const Layers&) const = default;
};

// A change of one text costs the same however many others are open, but for a copy of a few pointers for each. Not
// thread-safe.
class Combination {
public:
    explicit Combination(Layers layers);

    const Layers& Below() const { return layers; }

    // Replaces the file of that path, and the earlier text.
    void Put(const std::shared_ptr<const OpenText>& text);
    void Remove(const std::string& path); // the file counts again

    SnapshotPointer Current() const;

private:
    void AddIndex(const SnapshotPointer& snapshot, const std::string* systemRoot);
    void AddRead(const SnapshotPointer& snapshot, bool isSystem);
    void Hide(const std::string& path, Part* open);
    void Show(const std::string& path);

    const Layers layers;
    std::uint64_t otherBytes = 0;
    std::vector<Part> parts;                         // of the layers, then the open texts
    std::vector<std::vector<FileInSegment>> covered; // for each part of the layers: files that another layer has
    std::map<std::string, size_t> places;            // of open texts among the parts
};

} // namespace symbols
