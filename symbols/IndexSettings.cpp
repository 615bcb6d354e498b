#include "base/EnvironmentNumber.h"
#include "base/FindProgram.h"
#include "base/Paths.h"
#include "symbols/Index.h"
#include "tagging/ctags/CtagsProgram.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace symbols {

namespace {

constexpr unsigned kMostJobs = 64;
constexpr unsigned kLongestTimeLimit = 24 * 60 * 60;

base::Result<std::string> Ctags()
{
    const std::string directory = base::CurrentDirectory();
    const char* named = std::getenv("CPLUSTAGS_CTAGS");
    if (named == nullptr || *named == '\0')
        return tagging::FindCtags(directory);
    std::optional<std::string> program = base::FindProgram(named, directory);
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
    const unsigned cores = std::clamp(std::thread::hardware_concurrency(), 1u, kMostJobs);
    const base::Result<unsigned> jobs = base::NumberFrom("CPLUSTAGS_JOBS", kMostJobs, cores);
    if (!jobs)
        return jobs.Failure();
    const base::Result<unsigned> timeLimit =
        base::NumberFrom("CPLUSTAGS_TIME_LIMIT", kLongestTimeLimit, settings.ctags.timeLimit);
    if (!timeLimit)
        return timeLimit.Failure();
    settings.ctags.program = std::move(*program);
    settings.ctags.prototypes = true;
    settings.ctags.timeLimit = *timeLimit;
    settings.jobs = *jobs;
    return settings;
}

} // namespace symbols
