#include "cplustags/NewFile.h"

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

// The file that a path means, absolute, links followed: also those that point nowhere yet.
fs::path FollowLinks(const std::string& path)
{
    constexpr int kMostLinks = 40;
    std::error_code problem;
    fs::path file = fs::absolute(path, problem);
    for (int links = 0; links < kMostLinks && fs::is_symlink(file, problem); ++links)
        file = file.parent_path() / fs::read_symlink(file, problem);
    return file.lexically_normal();
}

// What the working directories for a target begin with.
std::string WorkingName(const fs::path& target)
{
    return "." + target.filename().string().substr(0, kMostOfLeaf) + ".cplustags-";
}

class Descriptor {
public:
    explicit Descriptor(int number) : number(number) {}
    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return number >= 0; }
    int Number() const { return number; }

private:
    int number;
};

int OpenDirectory(const fs::path& path)
{
    return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

// Nobody holds the lock of a killed process's directory. What cannot be told, or is someone else's, stays.
void RemoveIfAbandoned(const fs::path& directory)
{
    const Descriptor held(OpenDirectory(directory));
    struct stat status;
    if (!held.IsOpen() || ::fstat(held.Number(), &status) != 0 || status.st_uid != ::geteuid())
        return;
    std::error_code ignored;
    if (::flock(held.Number(), LOCK_EX | LOCK_NB) == 0)
        fs::remove_all(directory, ignored);
}

void RemoveAbandoned(const fs::path& parent, const std::string& workingName)
{
    std::error_code problem;
    for (fs::directory_iterator entry(parent, problem), end; !problem && entry != end; entry.increment(problem))
        if (entry->path().filename().string().compare(0, workingName.length(), workingName) == 0)
            RemoveIfAbandoned(entry->path());
}

std::string Reason()
{
    return std::strerror(errno);
}

} // namespace

NewFile::NewFile(const std::string& path)
{
    const fs::path file = FollowLinks(path);
    const fs::path parent = file.parent_path();
    target = file;

    // Under the parent's lock nobody takes a directory that has just been made for an abandoned one. Where it cannot be
    // locked, nothing is removed.
    const Descriptor heldParent(OpenDirectory(fs::is_directory(parent) ? fs::canonical(parent) : parent));
    if (heldParent.IsOpen() && ::flock(heldParent.Number(), LOCK_EX) == 0)
        RemoveAbandoned(parent, WorkingName(file));
    std::string pattern = parent / (WorkingName(file) + "XXXXXX");
    if (::mkdtemp(pattern.data()) == nullptr) {
        error = "cannot write in " + parent.string() + ": " + Reason();
        return;
    }
    directory = pattern;
    lock = OpenDirectory(directory);
    if (lock >= 0)
        ::flock(lock, LOCK_EX | LOCK_NB);
    this->file = ::open((directory + "/" + kNewName).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (this->file < 0)
        error = "cannot write in " + directory + ": " + Reason();
    buffer.reserve(kBufferSize);
}

NewFile::~NewFile()
{
    if (file >= 0)
        ::close(file);
    std::error_code ignored;
    if (!directory.empty())
        fs::remove_all(directory, ignored);
    if (lock >= 0)
        ::close(lock);
}

bool NewFile::Flush()
{
    for (size_t written = 0; written < buffer.length();) {
        const ssize_t count = ::write(file, buffer.data() + written, buffer.length() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            error = "cannot write " + target + ": " + Reason();
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

// Some file systems tell only at the end that there was no room.
bool NewFile::Commit()
{
    if (!error.empty() || !Flush())
        return false;
    struct stat old;
    if (::stat(target.c_str(), &old) == 0) {
        ::fchmod(file, old.st_mode & 07777);
        if (old.st_uid != ::geteuid() && ::fchown(file, old.st_uid, old.st_gid) != 0)
            errno = 0; // the file is the user's own then
    }
    const bool closed = ::close(std::exchange(file, -1)) == 0;
    if (!closed || ::rename((directory + "/" + kNewName).c_str(), target.c_str()) != 0) {
        error = "cannot write " + target + ": " + Reason();
        return false;
    }
    return true;
}

} // namespace cplustags
