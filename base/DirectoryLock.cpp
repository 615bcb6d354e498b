#include "base/DirectoryLock.h"

#include "base/FileIdentity.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace base {

namespace {

bool IsPlainFile(int file)
{
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

DirectoryLock::DirectoryLock(const std::string& directory, const std::function<void()>& waits,
                             const std::function<bool()>& givesUp)
    : path(directory + "/.tags.lock")
{
    bool waited = false; // also for the file of another run, removed since
    const std::function<void()> waitsOnce = [&] {
        if (!std::exchange(waited, true))
            waits();
    };
    while (!givesUp()) {
        // O_NONBLOCK: opening a pipe without a writer would block.
        file = Descriptor(::open(path.c_str(), O_RDONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666));
        if (!file.IsOpen())
            return;
        if (!IsPlainFile(file.Number()) || !Wait(waitsOnce, givesUp))
            break;
        // The previous owner removes the file at the end: the locked file may no longer be the one at 'path'.
        if (IsStillAt(file.Number(), path))
            return;
        file.Close();
    }
    file.Close();
}

DirectoryLock::~DirectoryLock()
{
    if (file.IsOpen())
        ::unlink(path.c_str());
}

// Polls, because another thread cannot interrupt a blocking lock call.
bool DirectoryLock::Wait(const std::function<void()>& waits, const std::function<bool()>& givesUp) const
{
    constexpr std::chrono::milliseconds kLookAgain(20);
    while (::flock(file.Number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        waits();
        if (givesUp())
            return false;
        std::this_thread::sleep_for(kLookAgain);
    }
    return true;
}

} // namespace base
