// A file that replaces another in one step, or not at all.
#pragma once

#include "base/NewFile.h"
#include "base/WorkingDirectory.h"

#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// What to do with a target that is a symbolic link. A hostile tree may contain links of any name to any of the user's
// files, so links are followed only with the user's permission.
enum class AtLink {
    Refuse,
    Follow, // the link stays; its target is replaced or created
};

// The reason why AtLink::Refuse refuses 'path'; "" if there is no symbolic link. Names the link, its target and the
// remedies. Links in the directory part do not count.
std::string RefusalOfLink(const std::string& path);

// The new file grows in a working directory beside the target, so that the last step is a rename within one file
// system. Whatever stops the process, the old file is unchanged. If two processes have the same target, the later one
// to end wins. Hard links to the old file keep the old content.
//
// The new file gets the old one's permissions. Errors are texts that name the file. Not thread-safe, except for
// Directory().
class NewFile {
public:
    // On failure Error() is not empty, and nothing else may be called.
    explicit NewFile(const std::string& target, AtLink atLink = AtLink::Refuse);

    const std::string& Error() const { return error; }
    const std::string& Directory() const { return directory->Path(); } // other temporary files may be put there

    bool Write(std::string_view text);                  // buffered; false as soon as a write has failed
    bool WriteOver(off_t place, std::string_view text); // replaces text that was written before

    // Sets the modification time, which later writes change again. Some file systems store it less exactly, or not at
    // all; that is not a failure.
    void SetTime(const timespec& modified);
    bool Commit(); // puts the new file in place; false on failure, with the old one unchanged

private:
    bool Flush();
    bool Fail(const std::string& what, int reason);

    std::string error;
    std::string target;
    std::unique_ptr<base::WorkingDirectory> directory;
    std::string buffer;
    std::optional<base::NewFile> file;
};

} // namespace tagsfile
