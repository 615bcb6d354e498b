#include "symbols/Watching.h"

#include "symbols/update/GitTree.h"
#include "symbols/update/TreeWatch.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <poll.h>

namespace symbols {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// A batch of changes ends when none follows for a while: soon after a single save, later in a checkout, which pauses
// now and then. It ends at last after a time, so that a tree that never rests is kept current as well.
constexpr milliseconds kQuietAfterSave{15};
constexpr milliseconds kQuiet{60};
constexpr milliseconds kLongest{300};
constexpr size_t kFilesOfSave = 8;
constexpr size_t kMostFiles = 500; // in a batch; for more, a walk costs less

constexpr int kTimesWalk = 10;

class Keeper {
public:
    Keeper(const WatchedIndex& index, const base::CancelToken& cancel)
        : index(index), cancel(cancel),
          watch({{index.starts.begin(), index.starts.end()}, index.isSystem, index.mostWatches})
    {
    }

    base::Result<void> Run();

private:
    base::Result<UpdateResult> UpdateAll();
    base::Result<UpdateResult> UpdateSome(const TreeWatch::Events& events);
    void Report(const base::Result<UpdateResult>& result);
    TreeWatch::Events Wait();
    bool WaitFor(milliseconds limit); // false when nothing happens, or it is cancelled
    std::optional<milliseconds> Interval() const;

    const WatchedIndex& index;
    const base::CancelToken& cancel;
    TreeWatch watch;
    Clock::duration lastWalk{};
    bool failed = false; // the last update
    std::string lastFailure;
};

base::Result<UpdateResult> Keeper::UpdateAll()
{
    const Clock::time_point start = Clock::now();
    watch.BeginWalk();
    if (const GitTree::Pointer tree = index.isSystem ? nullptr : GitTree::Around(index.root))
        watch.EnterGitDirectory(tree->Directory());
    const base::Result<UpdateResult> result =
        index.updateAll([this](const std::string& directory) { watch.Enter(directory); });
    if (!index.directory.empty()) // it is there by now
        watch.EnterIndexDirectory(index.directory);
    if (result)
        watch.EndWalk();
    lastWalk = Clock::now() - start;
    return result;
}

base::Result<UpdateResult> Keeper::UpdateSome(const TreeWatch::Events& events)
{
    if (events.needsWalk || events.files.size() > kMostFiles)
        return UpdateAll();
    return index.updateSome({events.files.begin(), events.files.end()},
                            [this](const std::string& directory) { watch.Enter(directory); });
}

void Keeper::Report(const base::Result<UpdateResult>& result)
{
    failed = !result;
    if (!result && !cancel.IsCancelled() && result.Failure().Message() != lastFailure && index.say)
        index.say(result.Failure().Message());
    lastFailure = result ? "" : result.Failure().Message();
    if (result && index.changed && (result->parsed > 0 || result->removed > 0 || result->rebuilt))
        index.changed(*result);
}

std::optional<milliseconds> Keeper::Interval() const
{
    if (failed)
        return index.untilRetry;
    if (watch.IsComplete())
        return std::nullopt;
    return std::max(index.betweenWalks, std::chrono::duration_cast<milliseconds>(lastWalk * kTimesWalk));
}

bool Keeper::WaitFor(milliseconds limit)
{
    pollfd places[] = {{watch.Descriptor(), POLLIN, 0}, {cancel.Descriptor(), POLLIN, 0}};
    ::poll(places, 2, static_cast<int>(limit.count()));
    return !cancel.IsCancelled() && (places[0].revents & POLLIN) != 0;
}

// Collects the changes of one save or one checkout.
TreeWatch::Events Keeper::Wait()
{
    TreeWatch::Events events;
    const std::optional<milliseconds> interval = Interval();
    if (!WaitFor(interval.value_or(milliseconds(-1)))) {
        events.needsWalk = interval.has_value();
        return events;
    }
    events.Add(watch.Read());
    const Clock::time_point end = Clock::now() + kLongest;
    const auto quiet = [&] {
        return events.needsWalk || events.files.size() > kFilesOfSave ? kQuiet : kQuietAfterSave;
    };
    while (!events.IsEmpty() && Clock::now() < end && WaitFor(quiet()))
        events.Add(watch.Read());
    events.needsWalk = events.needsWalk || failed;
    return events;
}

base::Result<void> Keeper::Run()
{
    base::Result<UpdateResult> first = UpdateAll();
    if (!first && !cancel.IsCancelled())
        return first.Failure();
    Report(first);
    while (!cancel.IsCancelled()) {
        const TreeWatch::Events events = Wait();
        if (!cancel.IsCancelled() && !events.IsEmpty())
            Report(UpdateSome(events));
    }
    return {};
}

} // namespace

base::Result<void> KeepCurrent(const WatchedIndex& index, const base::CancelToken& cancel)
{
    return Keeper(index, cancel).Run();
}

} // namespace symbols
