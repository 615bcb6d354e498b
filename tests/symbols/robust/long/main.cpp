// The long form of the index's tests of robustness: random histories, kills at random moments, and many processes.
//
//     index_run [STEPS [SEED]]
//
// Plays histories of 300 steps until they have STEPS together. Then it kills 200 updates, and lets two processes write
// and ten read a store. The seed is printed; the same seed plays the same histories.
#include "tests/support/RunProgram.h"
#include "tests/symbols/robust/History.h"
#include "tests/symbols/robust/Indexes.h"
#include "tests/symbols/robust/SourceTree.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

constexpr size_t kSteps = 3000;
constexpr size_t kHistory = 300;
constexpr int kKills = 200;
constexpr const char* kGenerations = "2000";

std::string PlayHistories(size_t steps, unsigned long seed)
{
    for (size_t done = 0; done < steps; done += kHistory) {
        const HistoryPlan plan = {.seed = seed + done, .steps = kHistory, .files = 25, .withGit = done % 600 == 0};
        if (const std::string difference = PlayHistory(plan); !difference.empty())
            return "the history with the seed " + std::to_string(plan.seed) + ":\n" + difference;
        std::printf("%zu steps\n", done + kHistory);
        std::fflush(stdout);
    }
    return "";
}

std::string KillUpdates(unsigned long seed)
{
    SourceTree tree(seed, 60, false);
    const TempDirectory cache;
    std::mt19937_64 random(seed);
    const std::vector<std::string> words = {INDEX_WORKER, "update", tree.Root(), cache.Path()};
    const auto start = Clock::now();
    RunProgram(words, "/");
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count();
    int killed = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        tree.Step();
        tree.Restore();
        if (random() % 4 == 0)
            std::filesystem::remove_all(cache.Path());
        std::filesystem::create_directories(cache.Path());
        RunningProgram update(words, "/");
        std::this_thread::sleep_for(
            std::chrono::microseconds(static_cast<long>(random() % static_cast<unsigned long>(whole / 2))));
        ::kill(update.Process(), SIGKILL);
        killed += update.Wait().signal == SIGKILL;
        symbols::Index index(OptionsFor(tree.Root(), cache.Path()));
        if (const std::string error = UpdateError(index); !error.empty())
            return "after kill " + std::to_string(kill) + ": " + error;
        const std::string difference = AnswersOf::Difference(AnswersOf::Of(index.Current(), SourceTree::Words()),
                                                             FreshAnswers(tree.Root(), SourceTree::Words()));
        if (!difference.empty())
            return "after kill " + std::to_string(kill) + ":\n" + difference;
    }
    std::printf("%d of %d updates were killed on the way\n", killed, kKills);
    return killed > kKills / 20 ? "" : "too few updates were killed on the way";
}

std::string ManyProcesses()
{
    const TempDirectory directory;
    const std::string place = directory / "store";
    std::vector<std::unique_ptr<RunningProgram>> programs;
    const auto start = [&](const std::vector<std::string>& words) {
        programs.push_back(std::make_unique<RunningProgram>(words, directory.Path()));
    };
    for (const char* name : {"one", "other"})
        start({INDEX_WORKER, "write", place, name, kGenerations});
    for (int reader = 0; reader < 10; ++reader)
        start({INDEX_WORKER, "read", place, "one", "other", kGenerations});
    std::string errors;
    for (const auto& program : programs)
        if (const ProgramRun run = program->Wait(); run.status != 0)
            errors += run.output + run.errors;
    return errors;
}

} // namespace

int main(int count, char** words)
{
    const size_t steps = count > 1 ? static_cast<size_t>(std::atol(words[1])) : kSteps;
    const unsigned long seed = count > 2 ? std::strtoul(words[2], nullptr, 10) : std::random_device()();
    if (steps == 0) {
        std::fputs("usage: index_run [STEPS [SEED]]\n", stderr);
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::printf("seed %lu\n", seed);
    std::string error = PlayHistories(steps, seed);
    if (error.empty())
        error = KillUpdates(seed);
    if (error.empty())
        error = ManyProcesses();
    if (!error.empty())
        std::fprintf(stderr, "index_run: %s\n", error.c_str());
    return error.empty() ? 0 : 1;
}
