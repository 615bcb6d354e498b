// Stores tags of many files in little memory.
#pragma once

#include "tagsfile/LineSource.h"
#include "tagsfile/Tag.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tagging {

using TagsByFile = std::map<unsigned, size_t>; // counts by file number

// The 1.5 million tags of /usr/include take less memory here than in ctags' own sort, since file names are not
// repeated. A store may be used by one thread at a time.
class TagStore {
public:
    TagStore();
    ~TagStore();
    TagStore(TagStore&&) noexcept;
    TagStore& operator=(TagStore&&) noexcept;

    void Add(unsigned file,
             const tagsfile::Tag& tag); // copies the texts; 'file' is an index into the fields for Sort()
    size_t Size() const;

    // Sorts by the bytes of the tags' lines. 'fields' are indexed by file number (see TagLine.h). Different stores can
    // be sorted at the same time.
    void Sort(const std::vector<std::string>& fields);

    // The sorted tags as lines. Store and fields must outlive the source. Tags whose lines are too long even without
    // their scope are left out, and added to '*leftOut' when they are reached.
    std::unique_ptr<tagsfile::LineSource> Lines(const std::vector<std::string>& fields, TagsByFile* leftOut) const;

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace tagging
