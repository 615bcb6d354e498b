#include "wren/core/TemporaryFile.h"

#include "base/Descriptor.h"
#include "wren/core/DiskSteps.h"
#include "wren/core/Documents.h"
#include "wren/core/OwnedFile.h"
#include "wren/core/UserDirectories.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace wren {

namespace {

constexpr const char* kTemporary = ".wren-";
constexpr time_t kLongestKept = 30 * 24 * 60 * 60; // seconds: an unreachable file system may return within them

std::string RecordsDirectory()
{
    return StateDirectory().empty() ? "" : StateDirectory() + "/saving";
}

base::Descriptor MakeRecord(std::string* path)
{
    return RecordsDirectory().empty() ? base::Descriptor() : MakeOwnedFile(RecordsDirectory(), "", path);
}

// A record's content: a path, a NUL, and once the file is made, its inode and a line end.
struct Recorded {
    std::string path;
    std::optional<std::uint64_t> inode;
};

std::optional<Recorded> ReadRecord(const std::string& file)
{
    std::string ignored;
    const std::string text = ReadWholeFile(file, &ignored).value_or("");
    const size_t end = text.find('\0');
    if (end == std::string::npos || !text.starts_with('/'))
        return std::nullopt;
    Recorded recorded = {text.substr(0, end), std::nullopt};
    if (text.ends_with('\n'))
        recorded.inode = std::strtoull(text.c_str() + end + 1, nullptr, 10);
    return recorded;
}

// A process killed before it recorded the inode has written nothing to the file.
bool IsTheSame(const Recorded& recorded, const struct stat& now)
{
    if (!S_ISREG(now.st_mode) || now.st_nlink != 1)
        return false;
    return recorded.inode ? now.st_ino == *recorded.inode : now.st_size == 0 && now.st_uid == ::geteuid();
}

// True when there is nothing more to remove, or never will be.
bool Remove(const Recorded& recorded)
{
    const base::Descriptor directory(::open(DirectoryOf(recorded.path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.IsOpen())
        return false;
    const std::string leaf = std::filesystem::path(recorded.path).filename();
    struct stat status;
    if (!leaf.starts_with(kTemporary) || ::fstatat(directory.Number(), leaf.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return true;
    return !IsTheSame(recorded, status) || ::unlinkat(directory.Number(), leaf.c_str(), 0) == 0;
}

bool IsLongAgo(const std::string& file)
{
    struct stat status;
    return ::stat(file.c_str(), &status) == 0 && std::time(nullptr) - status.st_mtim.tv_sec > kLongestKept;
}

} // namespace

class TemporaryFile::Record {
public:
    Record(const std::string& of, const DiskSteps& steps) : steps(steps), file(MakeRecord(&path))
    {
        std::error_code unknown;
        Write(std::filesystem::absolute(of, unknown).string() + '\0');
    }
    ~Record()
    {
        steps.Next();
        if (file.IsOpen())
            ::unlink(path.c_str());
    }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    void Made(int temporary)
    {
        struct stat status;
        if (::fstat(temporary, &status) == 0)
            Write(std::to_string(status.st_ino) + "\n");
    }

private:
    // Does not sync: after a power cut a temporary may stay. A truncated record only identifies less.
    void Write(const std::string& text)
    {
        steps.Next();
        if (file.IsOpen() && ::write(file.Number(), text.data(), text.size()) < 0)
            return;
    }

    const DiskSteps& steps;
    std::string path;
    const base::Descriptor file;
};

TemporaryFile::TemporaryFile(const DiskSteps& steps) : steps(steps) {}

// The record is removed last: after a kill in between, it identifies the file that was left.
TemporaryFile::~TemporaryFile() = default;

// The name contains no part of the real one, which may have the maximum length.
int TemporaryFile::Make(const std::string& directory, mode_t mode)
{
    static std::atomic<unsigned> count = 0;
    while (true) {
        const std::string path =
            directory + "/" + kTemporary + std::to_string(::getpid()) + "-" + std::to_string(++count);
        record = std::make_unique<Record>(path, steps);
        steps.Next();
        base::Result<base::NewFile> file = base::NewFile::Make(path, mode);
        if (!file && file.Failure().number == EEXIST)
            continue;
        if (!file)
            return file.Failure().number;
        made = std::move(*file);
        record->Made(made->Number());
        return 0;
    }
}

int TemporaryFile::RenameTo(const std::string& target)
{
    steps.Next();
    const base::Result<void> moved = made->MoveTo(target);
    return moved ? 0 : moved.Failure().number;
}

void KeepRecordsOfSaves()
{
    std::string ignored;
    if (!RecordsDirectory().empty() && MakeUserDirectory(RecordsDirectory(), &ignored))
        RemoveLeftTemporaries();
}

void RemoveLeftTemporaries()
{
    for (const std::string& record : EntriesIn(RecordsDirectory())) {
        const LeftFile left(record);
        if (!left.IsLeft())
            continue;
        const std::optional<Recorded> recorded = ReadRecord(record);
        if (!recorded || Remove(*recorded) || IsLongAgo(record))
            ::unlink(record.c_str());
    }
}

} // namespace wren
