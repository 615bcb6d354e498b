// The files that texts are written to before they take their place, beside the user's own.
#pragma once

#include "base/NewFile.h"

#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>

namespace wren {

struct DiskSteps;

// Open for writing, and gone again unless it was renamed. In StateDirectory()/saving, where that is there, a record
// says which file it is while it is: by that, and never by its name, what a killed process has left is known. Any
// thread.
class TemporaryFile {
public:
    explicit TemporaryFile(const DiskSteps& steps); // borrowed
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int Make(const std::string& directory, mode_t mode); // once; 0, or what errno says of the failure
    int RenameTo(const std::string& target);             // the same
    int File() const { return made->Number(); }          // open for writing

private:
    class Record;
    const DiskSteps& steps;
    std::unique_ptr<Record> record;
    std::optional<base::NewFile> made;
};

// Makes the place of the records, and removes what killed processes have left; says nothing when it cannot. Any thread.
void KeepRecordsOfSaves();

// Removes the temporaries that records of processes that are gone name: while the same file stands there as then,
// without another name. Any thread.
void RemoveLeftTemporaries();

} // namespace wren
