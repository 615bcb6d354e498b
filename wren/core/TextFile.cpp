#include "wren/core/TextFile.h"

#include "wren/core/Documents.h"
#include "wren/core/UserDirectories.h"

#include <atomic>
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

// What went wrong is a number of errno's, and 0 is success.

std::string DirectoryOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// Where writing to 'path' would write: behind the last link, which need not lead to anything.
int FollowLinks(std::string* path)
{
    constexpr int kMostLinks = 40; // as many as the system follows
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

struct Descriptor {
    explicit Descriptor(int number) : number(number) {}
    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    const int number;
};

// A file that is open for writing, and gone again unless it was kept.
class NewFile {
public:
    NewFile() = default;
    ~NewFile()
    {
        if (file >= 0)
            ::close(file);
        if (!path.empty())
            ::unlink(path.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // The name holds nothing of the real one, which may be as long as names can be.
    int Make(const std::string& directory, mode_t mode)
    {
        static std::atomic<unsigned> count = 0;
        do {
            path = directory + "/.wren-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
            file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        } while (file < 0 && errno == EEXIST);
        if (file >= 0)
            return 0;
        path.clear();
        return errno;
    }

    int RenameTo(const std::string& target)
    {
        if (::rename(path.c_str(), target.c_str()) != 0)
            return errno;
        path.clear();
        return 0;
    }

    void Keep() { path.clear(); }
    const std::string& Path() const { return path; }
    int Descriptor() const { return file; }

private:
    std::string path;
    int file = -1;
};

// A user's limit on the size of files ends the process by a signal, unless that is held back: then writing fails.
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

int WriteAll(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(file, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0)
            text.remove_prefix(static_cast<size_t>(count));
    }
    return ::fsync(file) == 0 ? 0 : errno;
}

// Access lists and what the user has noted on the file. A file system without them has none to copy.
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

void SyncDirectory(const std::string& directory)
{
    const Descriptor file(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (file.number >= 0)
        ::fsync(file.number);
}

// Whether a failure to replace the file says nothing about writing into it: no right in the directory, or a file that is
// mounted in its place.
bool SaysWriteInPlace(int reason)
{
    return reason == EACCES || reason == EPERM || reason == EROFS || reason == EBUSY || reason == EXDEV;
}

int Replace(const std::string& target, const struct stat* old, std::string_view text)
{
    NewFile fresh;
    if (const int reason = fresh.Make(DirectoryOf(target), old == nullptr ? 0666 : 0600))
        return reason;
    const int file = fresh.Descriptor();
    if (old != nullptr) {
        struct stat made;
        if (::fstat(file, &made) != 0)
            return errno;
        if ((made.st_uid != old->st_uid || made.st_gid != old->st_gid) && ::fchown(file, old->st_uid, old->st_gid) != 0)
            return errno;
        CopyAttributes(target, file);
        if (::fchmod(file, old->st_mode & 07777) != 0)
            return errno;
    }
    if (const int reason = WriteAll(file, text))
        return reason;
    if (const int reason = fresh.RenameTo(target))
        return reason;
    SyncDirectory(DirectoryOf(target));
    return 0;
}

// Room for the new text comes first, so that a full disk is found out before anything is overwritten.
int MakeRoom(int file, off_t before, off_t after)
{
    if (after <= before || ::fallocate(file, 0, before, after - before) == 0 || errno == EOPNOTSUPP)
        return 0;
    const int reason = errno;
    (void)::ftruncate(file, before);
    return reason;
}

int Overwrite(int file, std::string_view text)
{
    if (::lseek(file, 0, SEEK_SET) != 0)
        return errno;
    if (const int reason = WriteAll(file, text))
        return reason;
    return ::ftruncate(file, static_cast<off_t>(text.size())) == 0 && ::fsync(file) == 0 ? 0 : errno;
}

bool PutCopy(NewFile* copy, const std::string& text, std::string* error)
{
    const std::string directory = StateDirectory() + "/overwritten";
    if (StateDirectory().empty()) {
        *error = "there is no home directory, and so no place for a copy of the old text";
        return false;
    }
    if (!MakeUserDirectory(directory, error))
        return false;
    int reason = copy->Make(directory, 0600);
    if (reason == 0)
        reason = WriteAll(copy->Descriptor(), text);
    if (reason != 0)
        *error = directory + ": " + std::strerror(reason);
    return reason == 0;
}

bool WriteInPlace(const std::string& target, std::string_view text, std::string* error)
{
    const std::optional<std::string> old = ReadWholeFile(target, error);
    if (!old)
        return false;
    NewFile copy;
    if (!PutCopy(&copy, *old, error)) {
        *error = target + ": not written, since a copy of the old text cannot be kept: " + *error;
        return false;
    }
    const Descriptor file(::open(target.c_str(), O_WRONLY | O_CLOEXEC));
    int reason = file.number < 0
                     ? errno
                     : MakeRoom(file.number, static_cast<off_t>(old->size()), static_cast<off_t>(text.size()));
    bool restored = true;
    if (reason == 0) {
        reason = Overwrite(file.number, text);
        restored = reason == 0 || Overwrite(file.number, *old) == 0;
    }
    if (reason == 0)
        return true;
    *error = target + ": " + std::strerror(reason);
    if (!restored) {
        *error += "; the old text is in " + copy.Path();
        copy.Keep();
    }
    return false;
}

// What stands where the text goes, behind all links; none when nothing does. An answer other than 0 is why it cannot be
// written, known without trying.
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
        return EINVAL; // a device or a pipe would be replaced by a file
    return ::faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

} // namespace

FileStamp StampOf(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return {true, status.st_ino, status.st_size, status.st_mtim.tv_sec * 1'000'000'000L + status.st_mtim.tv_nsec};
}

bool WriteWholeFile(const std::string& path, std::string_view text, std::string* error)
{
    const SizeSignalHeld held;
    std::string target = path;
    std::optional<struct stat> old;
    int reason = Examine(&target, &old);
    bool inPlace = reason == 0 && old && old->st_nlink > 1;
    if (reason == 0 && !inPlace) {
        reason = Replace(target, old ? &*old : nullptr, text);
        inPlace = old && SaysWriteInPlace(reason);
    }
    if (inPlace)
        return WriteInPlace(target, text, error);
    if (reason != 0)
        *error = path + ": " + std::strerror(reason);
    return reason == 0;
}

} // namespace wren
