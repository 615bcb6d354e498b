#include "wren/script/RunScript.h"

#include "wren/core/PluginBundle.h"
#include "wren/script/ScriptSession.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace wren {

namespace {

// Nothing that the plug-in or a child process prints lands among the answers: they have a descriptor of their own, which
// children do not get.
int TakeStandardOutput()
{
    std::fflush(stdout);
    const int answers = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return answers;
}

bool WriteAll(int descriptor, const std::string& text)
{
    for (size_t done = 0; done < text.size();) {
        const ssize_t count = ::write(descriptor, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR)
            return false;
        done += count < 0 ? 0 : count;
    }
    return true;
}

} // namespace

int RunScript(const ScriptOptions& options)
{
    if (!options.home.empty())
        ::setenv("HOME", options.home.c_str(), 1);
    const int answers = TakeStandardOutput();
    std::string error;
    const std::unique_ptr<PluginBundle> bundle =
        PluginBundle::Load(options.bundle.empty() ? PluginBundle::DefaultDirectory() : options.bundle, &error);
    if (bundle == nullptr) {
        std::fprintf(stderr, "wren: %s\n", error.c_str());
        return 2;
    }
    ScriptSession session(*bundle, options.settings);
    bool allOk = true;
    for (std::string line; std::getline(std::cin, line);) {
        const Json answer = session.Answer(line);
        allOk = allOk && answer["ok"] == true;
        if (!WriteAll(answers, answer.dump() + "\n")) {
            std::perror("wren: cannot write answers");
            return 1;
        }
    }
    return allOk ? 0 : 1;
}

} // namespace wren
