#include "base/UserDirectories.h"

#include <cstdlib>

namespace base {

namespace {

// Variables that are not absolute paths are ignored, as the XDG specification requires.
std::string Below(const char* variable, const char* fromHome, const std::string& program)
{
    const char* value = std::getenv(variable);
    std::string directory = value != nullptr && *value == '/' ? value : "";
    if (directory.empty() && !Home().empty())
        directory = Home() + fromHome;
    if (directory.empty())
        return "";
    while (directory.ends_with('/'))
        directory.pop_back();
    return directory + "/" + program;
}

} // namespace

std::string Home()
{
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        return "";
    std::string path = home;
    while (path.ends_with('/'))
        path.pop_back();
    return path + "/";
}

std::string ConfigDirectory(const std::string& program)
{
    return Below("XDG_CONFIG_HOME", ".config", program);
}

std::string StateDirectory(const std::string& program)
{
    return Below("XDG_STATE_HOME", ".local/state", program);
}

std::string CacheDirectory(const std::string& program)
{
    return Below("XDG_CACHE_HOME", ".cache", program);
}

} // namespace base
