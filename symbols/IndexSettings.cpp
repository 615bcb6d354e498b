#include "base/Paths.h"
#include "symbols/Index.h"
#include "tagging/ctags/CtagsProgram.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace symbols {

namespace {

constexpr unsigned kMostJobs = 64;

base::Result<std::string> Ctags()
{
    const std::string directory = base::CurrentDirectory();
    const char* named = std::getenv("CPLUSTAGS_CTAGS");
    if (named == nullptr || *named == '\0')
        return tagging::FindCtags(directory);
    std::optional<std::string> program = tagging::FindProgram(named, directory);
    if (!program)
        return base::Error{"CPLUSTAGS_CTAGS is '" + base::Shown(named) + "', which cannot be run"};
    return std::move(*program);
}

} // namespace

base::Result<tagging::Settings> IndexSettings()
{
    base::Result<std::string> program = Ctags();
    if (!program)
        return program.Failure();
    tagging::Settings settings;
    settings.ctags.program = std::move(*program);
    settings.ctags.prototypes = true;
    settings.jobs = std::clamp(std::thread::hardware_concurrency(), 1u, kMostJobs);
    return settings;
}

} // namespace symbols
