#include "tests/symbols/robust/History.h"

#include "tests/symbols/robust/Indexes.h"
#include "tests/symbols/robust/SourceTree.h"

#include <memory>
#include <random>

namespace {

class History {
public:
    explicit History(const HistoryPlan& plan)
        : tree(plan.seed, plan.files, plan.withGit), random(plan.seed + 1), left(plan.steps)
    {
        Reopen();
    }

    std::string Play()
    {
        std::string difference = UpdateAndCompare();
        while (difference.empty() && left-- > 0) {
            steps += tree.Step() + "\n";
            if (random() % 3 == 0)
                difference = UpdateAndCompare();
            if (random() % 10 == 0)
                Reopen();
        }
        return difference.empty() ? "" : steps + difference;
    }

private:
    void Reopen()
    {
        index = std::make_unique<symbols::Index>(OptionsFor(tree.Root(), cache.Path()));
        steps += "reopen the index\n";
    }

    std::string UpdateAndCompare()
    {
        steps += "update\n";
        const std::string error = UpdateError(*index);
        // The index may keep what it knows of a file that cannot be read now; a fresh one cannot know it.
        if (!error.empty() || tree.IsRestricted())
            return error;
        return AnswersOf::Difference(AnswersOf::Of(index->Current(), SourceTree::Words()),
                                     FreshAnswers(tree.Root(), SourceTree::Words()));
    }

    SourceTree tree;
    const TempDirectory cache;
    std::unique_ptr<symbols::Index> index;
    std::mt19937_64 random;
    size_t left;
    std::string steps;
};

} // namespace

std::string PlayHistory(const HistoryPlan& plan)
{
    return History(plan).Play();
}
