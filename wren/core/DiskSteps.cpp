#include "wren/core/DiskSteps.h"

#include "base/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace wren {

std::string DirectoryOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

int WriteAll(int file, std::string_view text, const DiskSteps& steps)
{
    while (!text.empty()) {
        steps.Next();
        const ssize_t count = ::write(file, text.data(), std::min(text.size(), steps.mostBytes));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0)
            text.remove_prefix(static_cast<size_t>(count));
    }
    steps.Next();
    return ::fsync(file) == 0 ? 0 : errno;
}

void SyncDirectory(const std::string& directory)
{
    const base::Descriptor file(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (file.IsOpen())
        ::fsync(file.Number());
}

} // namespace wren
