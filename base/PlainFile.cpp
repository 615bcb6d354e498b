#include "base/PlainFile.h"

#include "base/Descriptor.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int WhyNotPlain(const struct stat& status)
{
    return S_ISREG(status.st_mode) ? 0 : S_ISDIR(status.st_mode) ? EISDIR : ENXIO;
}

int Open(const char* path, int flags)
{
    int file;
    do
        file = ::open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | flags);
    while (file < 0 && errno == EINTR);
    return file;
}

std::atomic<base::PlainFileOpener> gOpener = nullptr;

} // namespace

void base::SetPlainFileOpener(PlainFileOpener opener)
{
    gOpener = opener;
}

int base::OpenPlainFile(const char* path)
{
    const PlainFileOpener opener = gOpener;
    return opener != nullptr ? opener(path) : OpenPlainFileOnDisk(path);
}

int base::OpenPlainFileOnDisk(const char* path)
{
    struct stat status;
    if (::stat(path, &status) != 0)
        return -1;
    errno = WhyNotPlain(status);
    if (errno != 0)
        return -1;
    base::Descriptor file(Open(path, O_NONBLOCK));
    // A file server holds a lease on it for another client, which has to give it up within seconds. Only plain files
    // have leases.
    if (!file.IsOpen() && errno == EWOULDBLOCK)
        file = base::Descriptor(Open(path, 0));
    if (!file.IsOpen())
        return -1;
    // The path may lead to another file by now.
    errno = ::fstat(file.Number(), &status) != 0 ? errno : WhyNotPlain(status);
    return errno == 0 ? file.Release() : -1;
}
