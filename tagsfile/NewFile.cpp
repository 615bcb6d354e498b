#include "tagsfile/NewFile.h"

#include "base/Paths.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tagsfile {

namespace {

namespace fs = std::filesystem;

constexpr size_t kBufferSize = 256 * 1024;
constexpr const char* kNewName = "new";

// The absolute path, with links in its directory resolved. Unchanged if there is no such directory: creating the file
// will fail with the reason.
fs::path InRealDirectory(const fs::path& path)
{
    std::error_code problem;
    fs::path file = fs::absolute(path, problem);
    const fs::path parent = fs::canonical(file.parent_path(), problem);
    return problem ? file : parent / file.filename();
}

// The content of the link at 'file'; "" if that is not a link.
fs::path LinkTarget(const fs::path& file)
{
    std::error_code isNone;
    return fs::read_symlink(file, isNone);
}

// The absolute path with all links resolved, including dangling ones.
fs::path FollowLinks(const std::string& path)
{
    constexpr int kMostLinks = 40;
    fs::path file = InRealDirectory(path);
    for (int links = 0; links < kMostLinks; ++links) {
        const fs::path meant = LinkTarget(file);
        if (meant.empty())
            break;
        file = InRealDirectory(file.parent_path() / meant);
    }
    return file;
}

// Gives the new file the old one's permissions and, as far as the user may, its owner.
void TakeOver(const struct stat& old, int file)
{
    if (::fchown(file, old.st_uid, old.st_gid) != 0 && ::fchown(file, -1, old.st_gid) != 0)
        errno = 0; // then it belongs to the user
    ::fchmod(file, old.st_mode & 0777);
}

} // namespace

std::string RefusalOfLink(const std::string& path)
{
    const fs::path meant = LinkTarget(path);
    if (meant.empty())
        return "";
    return base::Shown(path) + " is a symbolic link to " + base::Shown(meant.native()) +
           " and is left unchanged; remove it, name another file with -f, or give --follow-links to write the "
           "file that it points to";
}

NewFile::NewFile(const std::string& path, AtLink atLink)
{
    const fs::path file = atLink == AtLink::Follow ? FollowLinks(path) : InRealDirectory(path);
    target = file;
    if (target.empty()) {
        error = "cannot write a file without a name";
        return;
    }
    error = RefusalOfLink(target);
    if (!error.empty())
        return;
    std::error_code ignored;
    if (fs::is_directory(file, ignored)) {
        error = "cannot write " + base::Shown(target) + ": it is a directory";
        return;
    }
    directory = std::make_unique<base::WorkingDirectory>(file.parent_path(), file.filename());
    error = directory->Error();
    if (!error.empty())
        return;
    base::Result<base::NewFile> made = base::NewFile::Make(Directory() + "/" + kNewName, 0666);
    if (made)
        this->file = std::move(*made);
    else
        Fail("cannot write in " + base::Shown(Directory()), made.Failure().number);
    buffer.reserve(kBufferSize);
}

bool NewFile::Fail(const std::string& what, int reason)
{
    error = what + ": " + std::strerror(reason);
    return false;
}

bool NewFile::Flush()
{
    if (const base::Result<void> written = base::WriteAll(file->Number(), buffer); !written)
        return Fail("cannot write " + base::Shown(target), written.Failure().number);
    buffer.clear();
    return true;
}

bool NewFile::Write(std::string_view text)
{
    if (!error.empty())
        return false;
    buffer += text;
    return buffer.length() < kBufferSize || Flush();
}

bool NewFile::WriteOver(off_t place, std::string_view text)
{
    if (!error.empty() || !Flush())
        return false;
    const ssize_t count = ::pwrite(file->Number(), text.data(), text.length(), place);
    if (count != static_cast<ssize_t>(text.length()))
        Fail("cannot write " + base::Shown(target), errno);
    return error.empty();
}

void NewFile::SetTime(const timespec& modified)
{
    const timespec times[] = {modified, modified};
    if (error.empty() && Flush())
        ::futimens(file->Number(), times);
}

// Some file systems report only now that they are full. A link created meanwhile is not followed either: its target has
// nothing to do with the new file.
bool NewFile::Commit()
{
    if (!error.empty() || !Flush())
        return false;
    struct stat old;
    if (::lstat(target.c_str(), &old) == 0 && S_ISREG(old.st_mode))
        TakeOver(old, file->Number());
    error = RefusalOfLink(target);
    if (!error.empty())
        return false;
    const base::Result<void> moved = file->MoveTo(target);
    return moved || Fail("cannot write " + base::Shown(target), moved.Failure().number);
}

} // namespace tagsfile
