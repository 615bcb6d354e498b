// A file that takes another's place in one step, or not at all.
#pragma once

#include "base/NewFile.h"
#include "base/WorkingDirectory.h"

#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace cplustags {

// Whether a file is written whose name is that of a symbolic link. A tree from elsewhere may bring links of any name to
// any of the user's files, so nothing is written through one that the user has not allowed.
enum class AtLink {
    Refuse,
    Follow, // the link stays one, and the file that it points to is replaced, or made
};

// Why no file is put in place at 'path' with AtLink::Refuse; "" when no symbolic link stands there. Names the link,
// what it points to, and what can be done. Links in the directory part are none of these.
std::string RefusalOfLink(const std::string& path);

// It grows in a working directory of its own beside the target, so that the last step is a rename within one file
// system. Whatever stops the process, the old file is untouched. Two processes with the same target do not disturb each
// other: the later one to end wins. Only this name of the old file gets the new one; its other names (hard links) keep
// what they have.
//
// Permissions of an old file are kept. Errors are texts that name the file. Not thread-safe, but for Directory().
class NewFile {
public:
    // On failure Error() is not empty, and nothing else may be called.
    explicit NewFile(const std::string& target, AtLink atLink = AtLink::Refuse);

    const std::string& Error() const { return error; }
    const std::string& Directory() const { return directory->Path(); } // others may put their temporary files there

    bool Write(std::string_view text);                  // buffered; false as soon as a write has failed
    bool WriteOver(off_t place, std::string_view text); // what has been written already

    // When it has been modified, as it will be told; anything written later changes that again. Some file systems keep
    // such times less exactly, or not at all, which is no failure.
    void SetTime(const timespec& modified);
    bool Commit(); // puts the new file in place; false, with the old one as it was, when that fails

private:
    bool Flush();
    bool Fail(const std::string& what, int reason);

    std::string error;
    std::string target;
    std::unique_ptr<base::WorkingDirectory> directory;
    std::string buffer;
    std::optional<base::NewFile> file;
};

} // namespace cplustags
