#include "symbols/update/ReadSmallFile.h"

#include "base/Descriptor.h"
#include "base/PlainFile.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace symbols {

std::optional<std::string> ReadSmallFile(const std::string& path, Links links, size_t most)
{
    struct stat status;
    if (links == Links::Refuse && (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)))
        return std::nullopt;
    const base::Descriptor file(base::OpenPlainFile(path.c_str()));
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || static_cast<size_t>(status.st_size) > most)
        return std::nullopt;
    std::string text(static_cast<size_t>(status.st_size) + 1, '\0'); // one more, to notice that it grows
    size_t length = 0;
    while (length < text.size()) {
        const ssize_t count = ::read(file.Number(), text.data() + length, text.size() - length);
        if (count < 0 && errno != EINTR)
            return std::nullopt;
        if (count == 0)
            break;
        length += count > 0 ? static_cast<size_t>(count) : 0;
    }
    text.resize(length);
    return text;
}

} // namespace symbols
