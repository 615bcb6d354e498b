#include "wren/core/OwnedFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wren {

namespace {

// Before the new file is locked, another process may take it for a left one and remove it.
bool IsNamed(int file)
{
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink > 0;
}

} // namespace

base::Descriptor MakeOwnedFile(const std::string& directory, const std::string& end, std::string* path)
{
    static std::atomic<unsigned> count = 0;
    while (true) {
        const auto now = std::chrono::system_clock::now().time_since_epoch().count();
        *path = directory + "/" + std::to_string(::getpid()) + "-" + std::to_string(++count) + "-" +
                std::to_string(now) + end;
        base::Descriptor file(::open(path->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!file.IsOpen() && errno != EEXIST)
            return file;
        if (!file.IsOpen())
            continue;
        if ((::flock(file.Number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) && IsNamed(file.Number()))
            return file;
        ::unlink(path->c_str());
    }
}

// O_NONBLOCK: a pipe at this path must not block. The lock is shared, so that two processes that look do not hide the
// file from each other.
LeftFile::LeftFile(const std::string& path) : file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK))
{
    isLeft = file.IsOpen() && ::flock(file.Number(), LOCK_SH | LOCK_NB) == 0 && IsNamed(file.Number());
}

std::vector<std::string> EntriesIn(const std::string& directory)
{
    std::vector<std::string> entries;
    std::error_code problem;
    for (std::filesystem::directory_iterator entry(directory, problem), end; !problem && entry != end;
         entry.increment(problem))
        entries.push_back(entry->path());
    std::sort(entries.begin(), entries.end());
    return entries;
}

} // namespace wren
