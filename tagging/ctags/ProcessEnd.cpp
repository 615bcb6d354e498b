#include "tagging/ctags/ProcessEnd.h"

#include "base/Paths.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <string>
#include <sys/wait.h>

namespace tagging {

namespace {

std::string HowItEnded(int status)
{
    if (WIFSIGNALED(status))
        return std::string("was killed (") + ::strsignal(WTERMSIG(status)) + ")";
    if (WEXITSTATUS(status) == 0)
        return "ended before its work was done";
    return "failed with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

bool IsCrash(int status)
{
    constexpr int kCrashes[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSYS};
    return WIFSIGNALED(status) &&
           std::find(std::begin(kCrashes), std::end(kCrashes), WTERMSIG(status)) != std::end(kCrashes);
}

base::Error FailureOf(CtagsProcess& process, const CtagsSettings& settings, int status)
{
    std::string lastWords = process.LastWords();
    while (!lastWords.empty() && lastWords.back() == '\n')
        lastWords.pop_back();
    return {settings.program + " " + HowItEnded(status) +
            (lastWords.empty() ? "" : ":\n" + base::ShownLines(lastWords))};
}

} // namespace tagging
