#include "base/NewFile.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace base {

Result<void> WriteAll(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(file, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return SystemError("cannot write");
        text.remove_prefix(count < 0 ? 0 : static_cast<size_t>(count));
    }
    return {};
}

Result<NewFile> NewFile::Make(std::string path, mode_t mode)
{
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.IsOpen())
        return SystemError("cannot make " + path);
    return NewFile(std::move(path), std::move(file));
}

Result<NewFile> NewFile::MakeUnique(std::string prefix)
{
    std::string path = std::move(prefix) + "XXXXXX";
    Descriptor file(::mkostemp(path.data(), O_CLOEXEC));
    if (!file.IsOpen())
        return SystemError("cannot make " + path);
    return NewFile(std::move(path), std::move(file));
}

NewFile& NewFile::operator=(NewFile&& other) noexcept
{
    std::swap(path, other.path);
    std::swap(file, other.file);
    return *this;
}

NewFile::~NewFile()
{
    if (!path.empty())
        ::unlink(path.c_str());
}

Result<void> NewFile::MoveTo(const std::string& target)
{
    if (!file.Close() || ::rename(path.c_str(), target.c_str()) != 0)
        return SystemError("cannot write " + target);
    path.clear();
    return {};
}

} // namespace base
