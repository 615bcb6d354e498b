#include "base/WorkingDirectory.h"

#include "base/FileIdentity.h"
#include "base/Paths.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

namespace {

namespace fs = std::filesystem;

constexpr size_t kMostOfName = 200; // bytes of the target's name: names have at most 255
constexpr const char* kLockName = "lock";
constexpr std::string_view kInTheMiddle = ".cplustags-";
constexpr std::string_view kRandomPart = "XXXXXX";

bool IsWorkingName(std::string_view leaf)
{
    if (leaf.length() <= kInTheMiddle.length() + kRandomPart.length() || leaf.front() != '.')
        return false;
    const std::string_view random = leaf.substr(leaf.length() - kRandomPart.length());
    leaf.remove_suffix(kRandomPart.length());
    return leaf.substr(leaf.length() - kInTheMiddle.length()) == kInTheMiddle &&
           std::all_of(random.begin(), random.end(), [](unsigned char character) { return std::isalnum(character); });
}

bool IsOwnDirectory(const std::string& path)
{
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

// ctags makes no directories, and its replacements hardly nest any. A hostile tree may contain a working directory with
// any number of levels, and each level costs a descriptor.
constexpr int kMostLevels = 8;

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

bool RemoveAll(int parent, const char* name, int levels);

// Removes everything in the directory except 'except'; removes links, not their targets. Takes the descriptor. False
// when something is left.
bool RemoveContents(int number, std::string_view except, int levels)
{
    const std::unique_ptr<DIR, CloseDirectory> directory(number < 0 ? nullptr : ::fdopendir(number));
    if (directory == nullptr)
        return false;
    bool isEmpty = true;
    while (const dirent* entry = ::readdir(directory.get()))
        if (const std::string_view name = entry->d_name; name != "." && name != ".." && name != except)
            isEmpty = RemoveAll(number, entry->d_name, levels) && isEmpty;
    return isEmpty;
}

int OpenDirectory(int parent, const char* name)
{
    return ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

bool RemoveAll(int parent, const char* name, int levels)
{
    if (::unlinkat(parent, name, 0) == 0)
        return true;
    return levels > 0 && RemoveContents(OpenDirectory(parent, name), "", levels - 1) &&
           ::unlinkat(parent, name, AT_REMOVEDIR) == 0;
}

// Removes the lock last: after a kill here, the next run removes the rest. The lock stays if anything else does.
void Remove(const std::string& directory)
{
    if (!RemoveContents(OpenDirectory(AT_FDCWD, directory.c_str()), kLockName, kMostLevels))
        return;
    ::unlink((directory + "/" + kLockName).c_str());
    ::rmdir(directory.c_str());
}

// Only a file is a lock. Opening a pipe or a device may block or have side effects.
base::Descriptor OpenLock(const std::string& path)
{
    struct stat status;
    if (::lstat(path.c_str(), &status) != 0)
        return base::Descriptor();
    if (!S_ISREG(status.st_mode)) {
        errno = EINVAL;
        return base::Descriptor();
    }
    return base::Descriptor(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

// The lock of a killed process is free. A process that has made a directory but not locked it yet may lose it here; it
// notices and makes another. In doubt, and for other users' directories, nothing is removed.
void RemoveIfAbandoned(const fs::path& directory)
{
    if (!IsOwnDirectory(directory))
        return;
    const base::Descriptor lock = OpenLock(directory / kLockName);
    if (lock.IsOpen() && ::flock(lock.Number(), LOCK_EX | LOCK_NB) == 0)
        Remove(directory);
    else if (!lock.IsOpen() && errno == ENOENT)
        ::rmdir(directory.c_str()); // only if it is empty
}

} // namespace

void RemoveAbandonedIn(const std::string& parent)
{
    std::error_code problem;
    for (fs::directory_iterator entry(parent, problem), end; !problem && entry != end; entry.increment(problem))
        if (IsWorkingName(entry->path().filename().native()))
            RemoveIfAbandoned(entry->path());
}

WorkingDirectory::WorkingDirectory(const std::string& parent, const std::string& name)
{
    RemoveAbandonedIn(parent);
    constexpr int kTries = 100; // each fails only if another run interferes
    for (int i = 0; i < kTries; ++i) {
        std::string pattern = parent + "/." + name.substr(0, kMostOfName);
        pattern.append(kInTheMiddle).append(kRandomPart);
        if (::mkdtemp(pattern.data()) == nullptr) {
            Fail(parent);
            return;
        }
        path = pattern;
        if (TakeLock() || !error.empty())
            return;
    }
    error = "cannot write in " + Shown(parent) + ": what is made there is removed at once";
}

WorkingDirectory::~WorkingDirectory()
{
    if (!path.empty())
        Remove(path);
}

// False, without an error, when another run took the directory for abandoned and removed it.
bool WorkingDirectory::TakeLock()
{
    const std::string lockPath = path + "/" + kLockName;
    lock = base::Descriptor(::open(lockPath.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!lock.IsOpen() && errno != ENOENT)
        Fail(path);
    if (!lock.IsOpen())
        return false;
    // Without support for locks, no run removes anything either.
    const bool isTaken = ::flock(lock.Number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!isTaken && IsStillAt(lock.Number(), lockPath))
        return true;
    lock.Close();
    return false;
}

void WorkingDirectory::Fail(const std::string& where)
{
    error = "cannot write in " + Shown(where) + ": " + std::strerror(errno);
}

} // namespace base
