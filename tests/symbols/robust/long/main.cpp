// The long form of the index's tests of robustness: random histories, kills at random moments, and many processes.
//
//     index_run [STEPS [SEED]]
//
// Plays histories of 300 steps until they have STEPS together. Then it kills 200 updates. For a minute, two processes
// write and ten read a store, and for another one, two threads and ten. The seed is printed; the same seed plays the
// same histories.
#include "tests/support/RunProgram.h"
#include "tests/symbols/robust/Generations.h"
#include "tests/symbols/robust/History.h"
#include "tests/symbols/robust/RandomKills.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr size_t kSteps = 3000;
constexpr size_t kHistory = 300;
constexpr int kKills = 200;
constexpr const char* kGenerations = "2000"; // of a round
constexpr std::chrono::minutes kSharing(1);

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

std::string KillManyUpdates(unsigned long seed)
{
    int killed = 0;
    std::string difference = KillUpdates({.seed = seed, .kills = kKills, .files = 60, .worker = INDEX_WORKER}, &killed);
    if (!difference.empty())
        return difference;
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

std::string ManyThreads()
{
    constexpr int kReaders = 10;
    const TempDirectory directory;
    return ShareStoreBetweenThreads(directory / "store", kReaders, static_cast<unsigned>(std::atoi(kGenerations)));
}

std::string RunForAMinute(const char* what, std::string (*round)())
{
    const auto end = std::chrono::steady_clock::now() + kSharing;
    int rounds = 0;
    std::string error;
    for (; error.empty() && std::chrono::steady_clock::now() < end; ++rounds)
        error = round();
    std::printf("%d rounds of writers and readers as %s\n", rounds, what);
    return error;
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
        error = KillManyUpdates(seed);
    if (error.empty())
        error = RunForAMinute("processes", ManyProcesses);
    if (error.empty())
        error = RunForAMinute("threads", ManyThreads);
    if (!error.empty())
        std::fprintf(stderr, "index_run: %s\n", error.c_str());
    return error.empty() ? 0 : 1;
}
