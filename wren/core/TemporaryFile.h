// Temporary files beside the user's own, written first and then renamed into place.
#pragma once

#include "base/NewFile.h"

#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>

namespace wren {

struct DiskSteps;

// Open for writing, and removed at the end unless it was renamed. While it exists, a record in StateDirectory()/saving,
// if that exists, identifies it. Files left by a killed process are known only by that record, never by name. Any
// thread.
class TemporaryFile {
public:
    explicit TemporaryFile(const DiskSteps& steps); // borrowed
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int Make(const std::string& directory, mode_t mode); // call once; 0, or the errno of the failure
    int RenameTo(const std::string& target);             // the same
    int File() const { return made->Number(); }          // open for writing

private:
    class Record;
    const DiskSteps& steps;
    std::unique_ptr<Record> record;
    std::optional<base::NewFile> made;
};

// Makes the directory of the records, and removes temporaries that killed processes left; silent on failure. Any
// thread.
void KeepRecordsOfSaves();

// Removes the temporaries in the records of processes that are gone, if the path still has the same file, and the file
// has no other name. Any thread.
void RemoveLeftTemporaries();

} // namespace wren
