#include "tests/symbols/robust/RandomKills.h"

#include "tests/support/RunProgram.h"
#include "tests/symbols/robust/Indexes.h"
#include "tests/symbols/robust/SourceTree.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

class Kills {
public:
    explicit Kills(const KillPlan& plan)
        : tree(plan.seed, plan.files, false), random(plan.seed),
          words({plan.worker, "update", tree.Root(), cache.Path()})
    {
        const auto start = Clock::now();
        RunProgram(words, "/");
        whole = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count();
        before = Fresh();
    }

    std::string Next()
    {
        tree.Step();
        tree.Restore();
        if (random() % 4 == 0) {
            std::filesystem::remove_all(cache.Path());
            before = AnswersOf::Of(nullptr, SourceTree::Words());
        }
        std::filesystem::create_directories(cache.Path());
        UpdateAndKill();
        const std::string after = Fresh();
        symbols::Index index(OptionsFor(tree.Root(), cache.Path()));
        const std::string left = Answers(index);
        if (left != before && left != after)
            return "neither the old state nor the new one:\n" + AnswersOf::Difference(left, after);
        if (std::string error = UpdateError(index); !error.empty())
            return error;
        before = after;
        return AnswersOf::Difference(Answers(index), after);
    }

    int killed = 0;

private:
    std::string Fresh() const { return FreshAnswers(tree.Root(), SourceTree::Words()); }
    static std::string Answers(const symbols::Index& index)
    {
        return AnswersOf::Of(index.Current(), SourceTree::Words());
    }

    // The moment need not be exact, only different each time. The first one is the beginning.
    void UpdateAndKill()
    {
        RunningProgram update(words, "/");
        const auto time = updates++ == 0 ? 0 : std::uniform_int_distribution<long>(0, whole / 2)(random);
        std::this_thread::sleep_for(std::chrono::microseconds(time));
        ::kill(update.Process(), SIGKILL);
        killed += update.Wait().signal == SIGKILL;
    }

    SourceTree tree;
    const TempDirectory cache;
    std::mt19937_64 random;
    const std::vector<std::string> words;
    int updates = 0;
    long whole = 0;     // microseconds of a whole update
    std::string before; // the answers of the last complete state
};

} // namespace

std::string KillUpdates(const KillPlan& plan, int* killed)
{
    Kills kills(plan);
    for (int kill = 0; kill < plan.kills; ++kill)
        if (const std::string difference = kills.Next(); !difference.empty())
            return "after kill " + std::to_string(kill) + ": " + difference;
    *killed = kills.killed;
    return "";
}
