// A file that takes another's place in one step, or not at all.
#pragma once

#include "base/Descriptor.h"
#include "base/Result.h"

#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace base {

// Writes all of the text, however many calls that takes. Fails with the errno of the call that failed.
Result<void> WriteAll(int file, std::string_view text);

// It is written under a name of its own in the target's directory, so that readers find the old file or the new one,
// whole. It goes with its owner unless it has taken its place; what a killed process leaves is for its maker to find.
// Movable; not thread-safe.
class NewFile {
public:
    // 'path' is a name that nothing has; with EEXIST when something has it. 'mode' is subject to the umask.
    static Result<NewFile> Make(std::string path, mode_t mode);
    static Result<NewFile> MakeUnique(std::string prefix); // with six random characters behind it; for the user alone

    NewFile(NewFile&& other) noexcept : path(std::exchange(other.path, {})), file(std::move(other.file)) {}
    NewFile& operator=(NewFile&& other) noexcept;
    ~NewFile();

    int Number() const { return file.Number(); } // open for writing
    const std::string& Path() const { return path; }

    // Puts it in the place of what 'target' names, if there is anything. Before that it is closed, since some file
    // systems tell only then that there was no room. When it fails the old file is as it was.
    Result<void> MoveTo(const std::string& target);

private:
    NewFile(std::string path, Descriptor file) : path(std::move(path)), file(std::move(file)) {}

    std::string path; // "" when it is gone, or in its place
    Descriptor file;
};

} // namespace base
