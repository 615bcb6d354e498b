#include "tagging/ctags/CtagsProgram.h"

#include "base/ChildProcess.h"
#include "base/FindProgram.h"

#include <chrono>
#include <optional>
#include <utility>

namespace tagging {

namespace {

constexpr std::chrono::seconds kLongestAnswer(20);
constexpr const char* kNoCtags = "Universal Ctags is not installed, and without it no source can be read; "
                                 "on Debian: sudo apt install universal-ctags";

// Ignores option files in the current directory, which may be a stranger's. A program that does not answer is no ctags.
bool SaysItIsUniversal(const std::string& path)
{
    const base::CancelToken never;
    const base::Result<std::string> output =
        base::OutputOf({path, "--options=NONE", "--version"}, kLongestAnswer, never);
    return output && output->find("Universal Ctags") != std::string::npos;
}

} // namespace

base::Result<std::string> FindCtags(const std::string& currentDirectory)
{
    if (std::optional<std::string> universal = base::FindProgram("ctags-universal", currentDirectory))
        return *std::move(universal);
    std::optional<std::string> other = base::FindProgram("ctags", currentDirectory);
    if (other && SaysItIsUniversal(*other))
        return *std::move(other);
    return base::Error{kNoCtags};
}

} // namespace tagging
