// A file that takes another's place in one step, or not at all.
#pragma once

#include <ctime>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace cplustags {

// It grows in a working directory of its own beside the target, so that the last step is a rename within one file
// system. Whatever stops the process, the old file is untouched; the working directory goes at destruction, or, when the
// process was killed, when the next one for the same target begins. Two processes with the same target do not disturb
// each other: the later one to end wins.
//
// A target that is a link keeps being one; permissions of an old file are kept. Errors are texts that name the file.
// Not thread-safe, but for Directory().
class NewFile {
public:
    // On failure Error() is not empty, and nothing else may be called.
    explicit NewFile(const std::string& target);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    const std::string& Error() const { return error; }
    const std::string& Directory() const { return directory; } // absolute; others may put their temporary files there

    bool Write(std::string_view text);                  // buffered; false as soon as a write has failed
    bool WriteOver(off_t place, std::string_view text); // what has been written already

    // When it has been modified, as it will be told; anything written later changes that again. Some file systems keep
    // such times less exactly, or not at all, which is no failure.
    void SetTime(const timespec& modified);
    bool Commit(); // puts the new file in place; false, with the old one as it was, when that fails

private:
    void MakeDirectory(const std::string& parent, const std::string& name);
    bool TakeLock();
    bool Flush();
    void Fail(const std::string& what);

    std::string error;
    std::string target;
    std::string directory;
    std::string buffer;
    int file = -1;
    int lock = -1; // in the working directory, held for as long as that is in use
};

} // namespace cplustags
