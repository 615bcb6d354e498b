#include "cplustags/NewFile.h"

#include "base/Paths.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace cplustags {

namespace {

namespace fs = std::filesystem;

constexpr size_t kBufferSize = 256 * 1024;
constexpr const char* kNewName = "new";

// The path with the links of its directory followed, absolute. As it is where there is no such directory: nothing can
// be made there, which will be said.
fs::path InRealDirectory(const fs::path& path)
{
    std::error_code problem;
    fs::path file = fs::absolute(path, problem);
    const fs::path parent = fs::canonical(file.parent_path(), problem);
    return problem ? file : parent / file.filename();
}

// What the link of this name points to, as it says; "" when it is none.
fs::path LinkTarget(const fs::path& file)
{
    std::error_code isNone;
    return fs::read_symlink(file, isNone);
}

// The file that a path means, absolute, links followed: also those that point nowhere yet.
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

// The new file is whose the old one is, as far as the user may give files away, and has its permissions.
void TakeOver(const struct stat& old, int file)
{
    if (::fchown(file, old.st_uid, old.st_gid) != 0 && ::fchown(file, -1, old.st_gid) != 0)
        errno = 0; // it is the user's own then
    ::fchmod(file, old.st_mode & 0777);
}

} // namespace

std::string RefusalOfLink(const std::string& path)
{
    const fs::path meant = LinkTarget(path);
    if (meant.empty())
        return "";
    return base::Shown(path) + " is a symbolic link to " + base::Shown(meant.native()) +
           ", and is left as it is; remove it, name another file with -f, or give --follow-links to write the "
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

// Some file systems tell only at the end that there was no room. A link that was put there meanwhile is not followed
// either: what it points to says nothing about the new file.
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

} // namespace cplustags
