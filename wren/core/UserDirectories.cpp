#include "wren/core/UserDirectories.h"

#include "vetch/storage/Home.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

namespace wren {

namespace {

// A variable that is no absolute path is to be passed over, says the specification.
std::string Below(const char* variable, const char* fromHome)
{
    const char* value = std::getenv(variable);
    std::string base = value != nullptr && *value == '/' ? value : "";
    if (base.empty() && !Home().empty())
        base = Home() + fromHome;
    if (base.empty())
        return "";
    while (base.ends_with('/'))
        base.pop_back();
    return base + "/wren";
}

bool IsDirectory(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::string ConfigDirectory()
{
    return Below("XDG_CONFIG_HOME", ".config");
}

std::string StateDirectory()
{
    return Below("XDG_STATE_HOME", ".local/state");
}

bool MakeUserDirectory(const std::string& directory, std::string* error)
{
    for (size_t end = directory.find('/', 1); true; end = directory.find('/', end + 1)) {
        const std::string part = directory.substr(0, end);
        if (::mkdir(part.c_str(), 0700) != 0) {
            const int reason = errno;
            if (!IsDirectory(part)) {
                *error = part + ": " + std::strerror(reason);
                return false;
            }
        }
        if (end == std::string::npos)
            return true;
    }
}

} // namespace wren
