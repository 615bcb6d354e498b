#include "cplustags/NewFile.h"

#include "cplustags/Descriptor.h"
#include "cplustags/Paths.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace cplustags {

namespace {

namespace fs = std::filesystem;

constexpr size_t kBufferSize = 256 * 1024;
constexpr size_t kMostOfLeaf = 200; // bytes of the target's name in the working directory's: names end at 255
constexpr const char* kNewName = "new";
constexpr const char* kLockName = "lock";
constexpr std::string_view kRandomPart = "XXXXXX";

// The file that a path means, absolute, links followed: also those that point nowhere yet.
fs::path FollowLinks(const std::string& path)
{
    constexpr int kMostLinks = 40;
    std::error_code problem;
    fs::path file = fs::absolute(path, problem);
    for (int links = 0; links < kMostLinks; ++links) {
        const fs::path parent = fs::canonical(file.parent_path(), problem);
        if (problem)
            break; // nothing can be made there, which will be said
        file = parent / file.filename();
        const fs::path meant = fs::read_symlink(file, problem);
        if (problem)
            break;
        file = parent / meant;
    }
    return file;
}

// What the working directories for a target begin with.
std::string WorkingName(const fs::path& target)
{
    return "." + target.filename().string().substr(0, kMostOfLeaf) + ".cplustags-";
}

bool IsWorkingName(const std::string& leaf, const std::string& workingName)
{
    return leaf.length() == workingName.length() + kRandomPart.length() &&
           leaf.compare(0, workingName.length(), workingName) == 0 &&
           std::all_of(leaf.end() - kRandomPart.length(), leaf.end(),
                       [](unsigned char character) { return std::isalnum(character) != 0; });
}

bool IsOwnDirectory(const std::string& path)
{
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

// The lock goes last: whatever is left when the process is killed here, the next one removes.
void RemoveWorkingDirectory(const fs::path& directory)
{
    std::error_code ignored;
    for (fs::directory_iterator entry(directory, ignored), end; !ignored && entry != end; entry.increment(ignored))
        if (std::error_code kept; entry->path().filename() != kLockName)
            fs::remove_all(entry->path(), kept);
    ::unlink((directory / kLockName).c_str());
    ::rmdir(directory.c_str());
}

// Nobody holds the lock of a killed process's directory. Whoever has made a directory, and not yet its lock or not yet
// taken that, may lose it here: he looks after it and makes another. What cannot be told, or is someone else's, stays.
void RemoveIfAbandoned(const fs::path& directory)
{
    if (!IsOwnDirectory(directory))
        return;
    const Descriptor lock(::open((directory / kLockName).c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    if (lock.IsOpen() && ::flock(lock.Number(), LOCK_EX | LOCK_NB) == 0)
        RemoveWorkingDirectory(directory);
    else if (!lock.IsOpen() && errno == ENOENT)
        ::rmdir(directory.c_str()); // if it is empty
}

void RemoveAbandoned(const fs::path& parent, const std::string& workingName)
{
    std::error_code problem;
    for (fs::directory_iterator entry(parent, problem), end; !problem && entry != end; entry.increment(problem))
        if (IsWorkingName(entry->path().filename(), workingName))
            RemoveIfAbandoned(entry->path());
}

bool IsStillAt(int file, const std::string& path)
{
    struct stat held;
    struct stat there;
    return ::fstat(file, &held) == 0 && ::stat(path.c_str(), &there) == 0 && held.st_dev == there.st_dev &&
           held.st_ino == there.st_ino;
}

// The new file is whose the old one is, as far as the user may give files away, and has its permissions.
void TakeOver(const struct stat& old, int file)
{
    if (::fchown(file, old.st_uid, old.st_gid) != 0 && ::fchown(file, -1, old.st_gid) != 0)
        errno = 0; // it is the user's own then
    ::fchmod(file, old.st_mode & 0777);
}

} // namespace

NewFile::NewFile(const std::string& path)
{
    const fs::path file = FollowLinks(path);
    target = file;
    if (target.empty()) {
        error = "cannot write a file without a name";
        return;
    }
    std::error_code ignored;
    if (fs::is_directory(file, ignored)) {
        error = "cannot write " + Shown(target) + ": it is a directory";
        return;
    }
    RemoveAbandoned(file.parent_path(), WorkingName(file));
    MakeDirectory(file.parent_path(), WorkingName(file));
    if (!error.empty())
        return;
    this->file = ::open((directory + "/" + kNewName).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (this->file < 0)
        Fail("cannot write in " + Shown(directory));
    buffer.reserve(kBufferSize);
}

NewFile::~NewFile()
{
    if (file >= 0)
        ::close(file);
    if (!directory.empty())
        RemoveWorkingDirectory(directory);
    if (lock >= 0)
        ::close(lock);
}

void NewFile::MakeDirectory(const std::string& parent, const std::string& name)
{
    constexpr int kTries = 100; // a newcomer must come in between for each
    for (int i = 0; i < kTries; ++i) {
        std::string pattern = parent + "/" + name + std::string(kRandomPart);
        if (::mkdtemp(pattern.data()) == nullptr)
            return Fail("cannot write in " + Shown(parent));
        directory = pattern;
        if (TakeLock() || !error.empty())
            return;
    }
    error = "cannot write in " + Shown(parent) + ": what is made there is removed at once";
}

// False, without an error, when the directory has been taken for an abandoned one.
bool NewFile::TakeLock()
{
    const std::string path = directory + "/" + kLockName;
    lock = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (lock < 0 && errno != ENOENT)
        Fail("cannot write in " + Shown(directory));
    if (lock < 0)
        return false;
    // Where there are no such locks nobody removes anything either.
    const bool isTaken = ::flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!isTaken && IsStillAt(lock, path))
        return true;
    ::close(std::exchange(lock, -1));
    return false;
}

void NewFile::Fail(const std::string& what)
{
    error = what + ": " + std::strerror(errno);
}

bool NewFile::Flush()
{
    for (size_t written = 0; written < buffer.length();) {
        const ssize_t count = ::write(file, buffer.data() + written, buffer.length() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            Fail("cannot write " + Shown(target));
            return false;
        }
        written += static_cast<size_t>(count);
    }
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
    const ssize_t count = ::pwrite(file, text.data(), text.length(), place);
    if (count != static_cast<ssize_t>(text.length()))
        Fail("cannot write " + Shown(target));
    return error.empty();
}

void NewFile::SetTime(const timespec& modified)
{
    const timespec times[] = {modified, modified};
    if (error.empty() && Flush())
        ::futimens(file, times);
}

// Some file systems tell only at the end that there was no room.
bool NewFile::Commit()
{
    if (!error.empty() || !Flush())
        return false;
    struct stat old;
    if (::stat(target.c_str(), &old) == 0)
        TakeOver(old, file);
    const bool isClosed = ::close(std::exchange(file, -1)) == 0;
    const bool isDone = isClosed && ::rename((directory + "/" + kNewName).c_str(), target.c_str()) == 0;
    if (!isDone)
        Fail("cannot write " + Shown(target));
    return isDone;
}

} // namespace cplustags
