#include "wren/core/TextFile.h"

#include "base/Descriptor.h"
#include "wren/core/Documents.h"
#include "wren/core/OverwrittenCopy.h"
#include "wren/core/TemporaryFile.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace wren {

namespace {

// Failures are errno values; 0 is success.

// The file that a write to 'path' reaches, behind the last link; it need not exist.
int FollowLinks(std::string* path)
{
    constexpr int kMostLinks = 40; // the system's limit
    char target[PATH_MAX];
    for (int links = 0; links <= kMostLinks; ++links) {
        const ssize_t length = ::readlink(path->c_str(), target, sizeof target);
        if (length < 0)
            return 0;
        const std::string next(target, static_cast<size_t>(length));
        *path = next.starts_with('/') ? next : DirectoryOf(*path) + "/" + next;
    }
    return ELOOP;
}

// The limit on file sizes ends the process by a signal unless it is blocked: then the write fails.
class SizeSignalHeld {
public:
    SizeSignalHeld()
    {
        sigemptyset(&signals);
        sigaddset(&signals, SIGXFSZ);
        pthread_sigmask(SIG_BLOCK, &signals, &before);
    }
    ~SizeSignalHeld()
    {
        const timespec atOnce = {};
        if (!sigismember(&before, SIGXFSZ))
            while (sigtimedwait(&signals, nullptr, &atOnce) > 0)
                continue;
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }
    SizeSignalHeld(const SizeSignalHeld&) = delete;
    SizeSignalHeld& operator=(const SizeSignalHeld&) = delete;

private:
    sigset_t signals;
    sigset_t before;
};

// Copies the access list and the user attributes, where the file system has them.
void CopyAttributes(const std::string& from, int to)
{
    std::vector<char> names(64 * 1024);
    const ssize_t length = ::listxattr(from.c_str(), names.data(), names.size());
    std::vector<char> value(64 * 1024);
    for (ssize_t start = 0; start < length; start += static_cast<ssize_t>(std::strlen(&names[start])) + 1) {
        const std::string_view name = &names[start];
        if (name != "system.posix_acl_access" && !name.starts_with("user."))
            continue;
        const ssize_t size = ::getxattr(from.c_str(), name.data(), value.data(), value.size());
        if (size >= 0)
            (void)::fsetxattr(to, name.data(), value.data(), static_cast<size_t>(size), 0);
    }
}

// Whether this failure to replace the file still allows a write in place: no permission in the directory, or a file
// that is a mount point.
bool SaysWriteInPlace(int reason)
{
    return reason == EACCES || reason == EPERM || reason == EROFS || reason == EBUSY || reason == EXDEV;
}

int TakeOver(const std::string& target, const struct stat& old, int file)
{
    struct stat made;
    if (::fstat(file, &made) != 0)
        return errno;
    if ((made.st_uid != old.st_uid || made.st_gid != old.st_gid) && ::fchown(file, old.st_uid, old.st_gid) != 0)
        return errno;
    CopyAttributes(target, file);
    return ::fchmod(file, old.st_mode & 07777) == 0 ? 0 : errno;
}

int Replace(const std::string& target, const struct stat* old, std::string_view text, const DiskSteps& steps)
{
    TemporaryFile fresh(steps);
    if (const int reason = fresh.Make(DirectoryOf(target), old == nullptr ? 0666 : 0600))
        return reason;
    int reason = old == nullptr ? 0 : TakeOver(target, *old, fresh.File());
    if (reason == 0)
        reason = WriteAll(fresh.File(), text, steps);
    if (reason == 0)
        reason = fresh.RenameTo(target);
    if (reason == 0)
        SyncDirectory(DirectoryOf(target));
    return reason;
}

// Allocates space for the new text first, so that a full disk is detected before any byte is overwritten.
int MakeRoom(int file, off_t before, off_t after, const DiskSteps& steps)
{
    steps.Next();
    if (after <= before || ::fallocate(file, 0, before, after - before) == 0 || errno == EOPNOTSUPP)
        return 0;
    const int reason = errno;
    (void)::ftruncate(file, before);
    return reason;
}

int Overwrite(int file, std::string_view text, const DiskSteps& steps)
{
    if (::lseek(file, 0, SEEK_SET) != 0)
        return errno;
    if (const int reason = WriteAll(file, text, steps))
        return reason;
    steps.Next();
    if (::ftruncate(file, static_cast<off_t>(text.size())) != 0)
        return errno;
    steps.Next();
    return ::fsync(file) == 0 ? 0 : errno;
}

// The copy of the old text is on the disk before the first byte is overwritten. It is removed once the new text is on
// the disk.
bool WriteInPlace(const std::string& path, std::string_view text, std::string* error, const DiskSteps& steps)
{
    const std::optional<std::string> old = ReadWholeFile(path, error);
    if (!old)
        return false;
    OverwrittenCopy copy(steps);
    if (!copy.Make(path, *old, text, error)) {
        *error = path + ": not written, since a copy of the old text cannot be kept: " + *error;
        return false;
    }
    steps.Next();
    const base::Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    int reason = !file.IsOpen()
                     ? errno
                     : MakeRoom(file.Number(), static_cast<off_t>(old->size()), static_cast<off_t>(text.size()), steps);
    bool restored = true;
    if (reason == 0) {
        reason = Overwrite(file.Number(), text, steps);
        restored = reason == 0 || Overwrite(file.Number(), *old, steps) == 0;
    }
    if (reason == 0)
        return true;
    *error = path + ": " + std::strerror(reason);
    if (!restored) {
        *error += "; the old text is in " + copy.Path() + ", and the desktop editor offers it at its next start";
        copy.Keep();
    }
    return false;
}

// The file that the text goes to, behind all links; nullopt when it does not exist. A nonzero result is the reason that
// it cannot be written, known without trying.
int Examine(std::string* target, std::optional<struct stat>* old)
{
    if (const int reason = FollowLinks(target))
        return reason;
    struct stat status;
    if (::stat(target->c_str(), &status) != 0)
        return errno == ENOENT ? 0 : errno;
    *old = status;
    if (S_ISDIR(status.st_mode))
        return EISDIR;
    if (!S_ISREG(status.st_mode))
        return EINVAL; // a file would replace a device or a pipe
    return ::faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

} // namespace

bool WriteWholeFile(const std::string& path, std::string_view text, std::string* error, const DiskSteps& steps)
{
    const SizeSignalHeld held;
    RemoveLeftTemporaries();
    std::string target = path;
    std::optional<struct stat> old;
    int reason = Examine(&target, &old);
    bool inPlace = reason == 0 && old && old->st_nlink > 1;
    if (reason == 0 && !inPlace) {
        reason = Replace(target, old ? &*old : nullptr, text, steps);
        inPlace = old && SaysWriteInPlace(reason);
    }
    if (inPlace)
        return WriteInPlace(path, text, error, steps);
    if (reason != 0)
        *error = path + ": " + std::strerror(reason);
    return reason == 0;
}

} // namespace wren
