#include "wren/script/RunScript.h"

#include "wren/core/GuardedRunner.h"
#include "wren/core/Interruption.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"
#include "wren/script/HeadlessStage.h"
#include "wren/script/ScriptSession.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <unistd.h>

namespace wren {

namespace {

void Say(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ShownOn(STDERR_FILENO, text).c_str());
}

GuardedRunner::News MakeNews()
{
    GuardedRunner::News news;
    news.ended = [](const TagsOutcome& outcome) {
        if (outcome.kind != TagsOutcome::Kind::Made)
            Say(outcome.file + " was not made: " + outcome.problem);
    };
    news.stale = [](const StaleTags& stale) {
        Say(stale.file + " is out of date: " + stale.newer + " is newer. It is not rebuilt by itself, since " +
            stale.why);
    };
    return news;
}

// Its commands run in separate sessions, which a signal from the terminal does not reach.
class Guard {
public:
    explicit Guard(Interruption& interruption) : interruption(interruption), runner(STDERR_FILENO, MakeNews())
    {
        interruption.Hold([this](int signal) {
            runner.StopAndWait(signal);
            DieBySignal(signal);
        });
    }
    ~Guard()
    {
        runner.StopAndWait(SIGTERM);
        interruption.Release();
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

private:
    Interruption& interruption;
    GuardedRunner runner;
};

} // namespace

int AnswerLines(ScriptSession& session, ProgramOutput& answers)
{
    bool allOk = true;
    for (std::string line; std::getline(std::cin, line);) {
        const Json answer = session.Answer(line);
        allOk = allOk && answer["ok"] == true;
        if (!answers.Write(answer.dump() + "\n")) {
            if (!ProgramOutput::ReaderIsGone())
                std::perror("wren: cannot write answers");
            return 1;
        }
    }
    return allOk ? 0 : 1;
}

int RunScript(const ScriptOptions& options)
{
    if (!options.home.empty())
        ::setenv("HOME", options.home.c_str(), 1);
    std::optional<Interruption> interruption;
    if (options.guarded)
        interruption.emplace();
    ProgramOutput answers;
    std::string error;
    const std::unique_ptr<PluginBundle> bundle =
        PluginBundle::Load(options.bundle.empty() ? PluginBundle::DefaultDirectory() : options.bundle, &error);
    if (bundle == nullptr) {
        Say(error);
        return 2;
    }
    const std::unique_ptr<Guard> guard = interruption ? std::make_unique<Guard>(*interruption) : nullptr;
    HeadlessStage stage(*bundle, options.settings);
    ScriptSession session(stage);
    return AnswerLines(session, answers);
}

} // namespace wren
