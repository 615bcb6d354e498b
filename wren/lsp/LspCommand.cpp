#include "wren/lsp/LspCommand.h"

#include "wren/lsp/Server.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>

namespace wren::lsp {

namespace {

constexpr const char* kFooter =
    R"(An editor starts this and talks to it through standard input and output, by the Language
Server Protocol 3.17: definition, completion, hover, references, symbols and more for C, C++
and Objective-C. It needs no configuration, no compiler database and no build.

Exit status: 0 after the editor has ended it by the protocol's "shutdown" and "exit", 1 when
it ended otherwise, 2 wrong usage.

Examples:
    wren lsp
    wren lsp --root ~/src/project --log /tmp/wren-lsp.log)";

struct LspWords {
    SessionOptions session;
    bool noIndex = false;
    std::string log;
    std::string home;
};

// $XDG_CACHE_HOME counts before --home, as everywhere.
std::string CacheOf(const std::string& home)
{
    const char* const named = std::getenv("XDG_CACHE_HOME");
    if (home.empty() || (named != nullptr && *named == '/'))
        return "";
    return home + "/.cache/declaration";
}

base::CancelToken* gStop = nullptr; // what a signal cancels

void StopBySignals(base::CancelToken& stop)
{
    gStop = &stop;
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        std::signal(number, [](int) { gStop->Cancel(); });
}

int Serve(LspWords& words)
{
    if (!words.log.empty()) {
        const int log = ::open(words.log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        if (log < 0) {
            std::perror(("wren: cannot open the log " + words.log).c_str());
            return 2;
        }
        ::dup2(log, STDERR_FILENO);
        ::close(log);
    }
    words.session.withIndex = !words.noIndex;
    words.session.cache = CacheOf(words.home);
    static base::CancelToken stop; // signals come until the program has ended
    StopBySignals(stop);
    return Server(STDIN_FILENO, STDOUT_FILENO, words.session, stop).Run();
}

} // namespace

void AddLspCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("lsp", "Serve an editor by the Language Server Protocol");
    auto words = std::make_shared<LspWords>();
    command->add_option("--root", words->session.root, "The project, whatever the editor says")->type_name("DIR");
    command->add_option("--tags", words->session.tags, "Answer from this tags file, too")->type_name("FILE");
    command->add_flag("--no-index", words->noIndex, "Answer from open texts and tags files only");
    command->add_option("--log", words->log, "Append the log to this file, not to standard error")->type_name("FILE");
    command->add_option("--home", words->home, "Keep indexes in .cache below this directory")->type_name("DIR");
    command->add_flag("--stdio")->group(""); // many clients add it: what this server does anyway
    command->set_version_flag("--version", std::string("wren ") + WREN_VERSION)->group(""); // plug-ins ask servers so
    command->footer(kFooter);
    command->callback([words, status] { *status = Serve(*words); });
}

} // namespace wren::lsp
