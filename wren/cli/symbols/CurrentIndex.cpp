#include "wren/cli/symbols/CurrentIndex.h"

#include "vetch/support/ThreadStart.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/IndexProgress.h"
#include "wren/core/Interruption.h"

#include <chrono>
#include <utility>

namespace wren {

namespace {

constexpr std::chrono::milliseconds kMoment(250); // that a command waits for the check

symbols::WorkspaceOptions OptionsFor(const std::string& root, const IndexChoice& choice,
                                     const tagging::Settings& settings)
{
    symbols::WorkspaceOptions options;
    options.root = root;
    options.withSystem = choice.withSystem;
    options.tagging = settings;
    return options;
}

} // namespace

CurrentIndex::CurrentIndex(const std::string& root, const IndexChoice& choice, const tagging::Settings& settings,
                           Interruption& interruption)
    : choice(choice), interruption(interruption), workspace(OptionsFor(root, choice, settings))
{
}

CurrentIndex::~CurrentIndex()
{
    cancelCheck.Cancel();
    if (checker.joinable())
        checker.join();
}

base::Result<void> CurrentIndex::Prepare()
{
    std::vector<symbols::Index*> toCheck;
    if (choice.waits || workspace.Project().Current() == nullptr) {
        const std::string what = "indexing " + workspace.Project().Root() + "; only the first time takes long";
        if (const base::Result<void> updated = Update(workspace.Project(), what); !updated)
            return updated;
    } else {
        toCheck.push_back(&workspace.Project());
    }
    symbols::Index* const system = workspace.System();
    if (system != nullptr && (choice.waits || system->Current() == nullptr))
        MakeSystem(*system);
    else if (system != nullptr)
        toCheck.push_back(system);
    if (!toCheck.empty())
        StartCheck(std::move(toCheck));
    return {};
}

// Answers without the headers of the system are better than none.
void CurrentIndex::MakeSystem(symbols::Index& system)
{
    const base::Result<void> updated =
        Update(system, "indexing the headers of the system, once for all projects; --no-system leaves them out");
    if (!updated)
        Complain("the headers of the system are not indexed: " + updated.Failure().Message());
}

base::Result<void> CurrentIndex::Update(symbols::Index& index, const std::string& what)
{
    base::CancelToken cancel;
    interruption.Hold([&](int signal) {
        if (cancel.IsCancelled()) // the second one
            DieBySignal(signal);
        cancel.Cancel();
    });
    base::Result<symbols::UpdateResult> updated = [&] {
        IndexProgress progress(index.Current() == nullptr ? what : "");
        return index.Update(progress.Listener(), cancel);
    }();
    interruption.Release();
    if (interruption.Signal() != 0)
        DieBySignal(interruption.Signal());
    if (!updated)
        return updated.Failure();
    if (!updated->warning.empty())
        Complain(updated->warning);
    return {};
}

void CurrentIndex::StartCheck(std::vector<symbols::Index*> indexes)
{
    isChecked = false;
    checker = vetch::StartThread("changed files are not noticed", [this, indexes] { Check(indexes); });
    if (!checker.joinable())
        return;
    std::unique_lock lock(mutex);
    ended.wait_for(lock, kMoment, [this] { return isChecked; });
}

void CurrentIndex::Check(const std::vector<symbols::Index*>& indexes)
{
    bool allWell = true;
    for (symbols::Index* index : indexes)
        allWell = index->Update({}, cancelCheck) && allWell;
    const std::lock_guard guard(mutex);
    isChecked = true;
    failed = !allWell || cancelCheck.IsCancelled();
    ended.notify_all();
}

bool CurrentIndex::MayBeStale() const
{
    const std::lock_guard guard(mutex);
    return !isChecked || failed;
}

} // namespace wren
