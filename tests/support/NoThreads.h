// The system's limit on threads, for this process or for a program that it runs.
#pragma once

#include "tests/support/Limits.h"
#include "tests/support/RunProgram.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <sys/fsuid.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

// The limit does not apply to root, so a test run by root changes its user for it, with access to all files.
constexpr uid_t kSomebodyElse = 65534;

// While one lives and is in force, the process cannot start threads or processes.
class NoThreads {
public:
    NoThreads()
    {
        if (wasRoot && (::setresuid(kSomebodyElse, kSomebodyElse, 0) == 0))
            ::setfsuid(0);
        limit.emplace(RLIMIT_NPROC, 0);
    }
    ~NoThreads()
    {
        limit.reset();
        if (wasRoot && ::setresuid(0, 0, 0) != 0)
            std::perror("NoThreads");
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

    static bool IsInForce()
    {
        try {
            std::thread([] {}).join();
            return false;
        } catch (const std::system_error&) {
            return true;
        }
    }

private:
    const bool wasRoot = ::getuid() == 0;
    std::optional<Limit> limit;
};

// The command line that runs a program without further threads; none when the system cannot do that.
inline std::optional<std::vector<std::string>> WithoutThreads(const std::vector<std::string>& command)
{
    std::vector<std::string> words;
    if (::getuid() == 0)
        words = {"/usr/bin/setpriv", "--reuid=" + std::to_string(kSomebodyElse), "--inh-caps=+dac_override",
                 "--ambient-caps=+dac_override"};
    // LeakSanitizer needs a thread.
    const char* options = std::getenv("ASAN_OPTIONS");
    words.insert(words.end(), {"/usr/bin/env",
                               std::string("ASAN_OPTIONS=") + (options == nullptr ? "" : options) + ":detect_leaks=0"});
    words.insert(words.end(), {"/usr/bin/prlimit", "--nproc=1"});
    std::vector<std::string> trial = words;
    trial.insert(trial.end(), {"/bin/sh", "-c", "echo runs; /bin/true & wait; echo and starts another"});
    if (RunProgram(trial, "/").output != "runs\n")
        return std::nullopt;
    words.insert(words.end(), command.begin(), command.end());
    return words;
}
