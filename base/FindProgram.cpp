#include "base/FindProgram.h"

#include "base/Paths.h"

#include <cstdlib>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

namespace {

constexpr const char* kUsualPath = "/usr/local/bin:/usr/bin:/bin";

bool IsProgram(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

// "" if there is no such program.
std::string InSearchPath(const std::string& name, const std::string& currentDirectory)
{
    const char* searched = std::getenv("PATH");
    std::istringstream directories(searched != nullptr ? searched : kUsualPath);
    for (std::string directory; std::getline(directories, directory, ':');) {
        std::string path = AbsolutePath(directory + "/" + name, currentDirectory);
        if (!directory.empty() && IsProgram(path))
            return path;
    }
    return "";
}

} // namespace

std::optional<std::string> FindProgram(const std::string& name, const std::string& currentDirectory)
{
    const bool isPath = name.find('/') != std::string::npos;
    std::string path = isPath ? AbsolutePath(name, currentDirectory) : InSearchPath(name, currentDirectory);
    if (!IsProgram(path))
        return std::nullopt;
    return path;
}

} // namespace base
