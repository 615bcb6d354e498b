#include "wren/script/RunScript.h"

#include "wren/core/GuardedRunner.h"
#include "wren/core/OutputAside.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/TerminalText.h"
#include "wren/script/HeadlessStage.h"
#include "wren/script/ScriptSession.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

void Say(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ShownOn(STDERR_FILENO, text).c_str());
}

std::unique_ptr<GuardedRunner> MakeGuard()
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
    return std::make_unique<GuardedRunner>(STDERR_FILENO, std::move(news));
}

} // namespace

int AnswerLines(ScriptSession& session, OutputAside& answers)
{
    bool allOk = true;
    for (std::string line; std::getline(std::cin, line);) {
        const Json answer = session.Answer(line);
        allOk = allOk && answer["ok"] == true;
        if (!answers.Write(answer.dump() + "\n")) {
            if (!OutputAside::ReaderIsGone())
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
    OutputAside answers;
    std::string error;
    const std::unique_ptr<PluginBundle> bundle =
        PluginBundle::Load(options.bundle.empty() ? PluginBundle::DefaultDirectory() : options.bundle, &error);
    if (bundle == nullptr) {
        Say(error);
        return 2;
    }
    const std::unique_ptr<GuardedRunner> guard = options.guarded ? MakeGuard() : nullptr;
    HeadlessStage stage(*bundle, options.settings);
    ScriptSession session(stage);
    return AnswerLines(session, answers);
}

} // namespace wren
