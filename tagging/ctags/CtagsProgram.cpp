#include "tagging/ctags/CtagsProgram.h"

#include "base/Paths.h"
#include "tagging/ctags/ChildProcess.h"

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace tagging {

namespace {

constexpr const char* kUsualPath = "/usr/local/bin:/usr/bin:/bin";
constexpr std::chrono::seconds kLongestAnswer(20);
constexpr const char* kNoCtags = "Universal Ctags is not installed, and without it no source can be read; "
                                 "on Debian: sudo apt install universal-ctags";

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
        std::string path = base::AbsolutePath(directory + "/" + name, currentDirectory);
        if (!directory.empty() && IsProgram(path))
            return path;
    }
    return "";
}

// Ignores option files in the current directory, which may be a stranger's. A program that does not answer is no ctags.
bool SaysItIsUniversal(const std::string& path)
{
    const base::CancelToken never;
    const base::Result<std::string> output = OutputOf({path, "--options=NONE", "--version"}, kLongestAnswer, never);
    return output && output->find("Universal Ctags") != std::string::npos;
}

} // namespace

base::Result<std::string> FindCtags(const std::string& currentDirectory)
{
    std::string universal = InSearchPath("ctags-universal", currentDirectory);
    if (!universal.empty())
        return universal;
    std::string other = InSearchPath("ctags", currentDirectory);
    if (!other.empty() && SaysItIsUniversal(other))
        return other;
    return base::Error{kNoCtags};
}

std::optional<std::string> FindProgram(const std::string& name, const std::string& currentDirectory)
{
    const bool isPath = name.find('/') != std::string::npos;
    std::string path = isPath ? base::AbsolutePath(name, currentDirectory) : InSearchPath(name, currentDirectory);
    if (!IsProgram(path))
        return std::nullopt;
    return path;
}

} // namespace tagging
