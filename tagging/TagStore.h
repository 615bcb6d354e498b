// Tags of many files in little memory.
#pragma once

#include "tagsfile/LineSource.h"
#include "tagsfile/Tag.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tagging {

using TagsByFile = std::map<unsigned, size_t>; // how many, by the number of the file

// A million and a half tags of /usr/include take less memory here than the sort that ctags runs: a file's name is not
// repeated for each of its tags. One store belongs to one thread at a time.
class TagStore {
public:
    TagStore();
    ~TagStore();
    TagStore(TagStore&&) noexcept;
    TagStore& operator=(TagStore&&) noexcept;

    void Add(unsigned file,
             const tagsfile::Tag& tag); // texts are copied; 'file' is an index into the fields given to Sort()
    size_t Size() const;

    // Sorts by the bytes of the lines that the tags make; 'fields' by file number (see TagLine.h). Stores of different
    // workers can be sorted at the same time.
    void Sort(const std::vector<std::string>& fields);

    // The sorted tags as lines. Store and fields must outlive the source. Tags whose lines are too long even without
    // their scope are left out, and counted in '*leftOut' as they are passed.
    std::unique_ptr<tagsfile::LineSource> Lines(const std::vector<std::string>& fields, TagsByFile* leftOut) const;

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace tagging
