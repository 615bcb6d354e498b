#include "tagging/ctags/SourceNames.h"

#include <cctype>
#include <sys/mman.h>
#include <unistd.h>

namespace tagging {

bool ReadsName(const std::string& name)
{
    return name.find_first_of("\r\n") == std::string::npos && !std::isspace(static_cast<unsigned char>(name.back()));
}

std::string NameForCtags(const std::string& path, const std::string& directory)
{
    const size_t length = directory.size();
    const bool isBelow = path.compare(0, length, directory) == 0 && path[length] == '/';
    return isBelow ? "." + path.substr(length) : path;
}

bool PutInMemory(std::string_view text, Source& source)
{
    source.text = base::Descriptor(::memfd_create("source", MFD_CLOEXEC));
    source.name = "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(source.text.Number());
    while (!text.empty()) {
        const ssize_t size = ::write(source.text.Number(), text.data(), text.size());
        if (size < 0)
            return false;
        text.remove_prefix(static_cast<size_t>(size));
    }
    return source.text.IsOpen();
}

} // namespace tagging
