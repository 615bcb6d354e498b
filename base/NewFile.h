// A file that replaces another in one step, or not at all.
#pragma once

#include "base/Descriptor.h"
#include "base/Result.h"

#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace base {

// Writes all of the text, in as many calls as necessary. Fails with the errno of the failed call.
Result<void> WriteAll(int file, std::string_view text);

// It is written under its own name in the target's directory, so that readers find either the complete old file or the
// complete new one. Destruction removes it unless it has replaced the target. A killed process leaves the file behind
// for its creator to clean up. Movable; not thread-safe.
class NewFile {
public:
    // Fails with EEXIST when 'path' exists. 'mode' is subject to the umask.
    static Result<NewFile> Make(std::string path, mode_t mode);
    static Result<NewFile> MakeUnique(std::string prefix); // appends six random characters; readable by the user only

    NewFile(NewFile&& other) noexcept : path(std::exchange(other.path, {})), file(std::move(other.file)) {}
    NewFile& operator=(NewFile&& other) noexcept;
    ~NewFile();

    int Number() const { return file.Number(); } // open for writing
    const std::string& Path() const { return path; }

    // Replaces whatever 'target' names. Closes the file first, since some file systems report only then that they are
    // full. On failure the old file is unchanged.
    Result<void> MoveTo(const std::string& target);

private:
    NewFile(std::string path, Descriptor file) : path(std::move(path)), file(std::move(file)) {}

    std::string path; // "" once it is removed or in place
    Descriptor file;
};

} // namespace base
