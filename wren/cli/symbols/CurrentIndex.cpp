#include "wren/cli/symbols/CurrentIndex.h"

#include "vetch/support/ThreadStart.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/IndexProgress.h"
#include "wren/core/Interruption.h"

#include <chrono>
#include <utility>

namespace wren {

namespace {

// That a command waits for the check of the project, and of everything.
constexpr std::chrono::milliseconds kMoment(250);
constexpr std::chrono::milliseconds kShortMoment(100);

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
    symbols::Index& project = *workspace.Project();
    symbols::Index* const system = workspace.System();
    checksProject = !choice.waits && project.Current() != nullptr;
    if (!checksProject)
        if (base::Result<void> made =
                Update(project, "indexing " + project.Root() + "; only the first time takes long");
            !made)
            return made;
    checksSystem = system != nullptr && !choice.waits && system->Current() != nullptr;
    if (system != nullptr && !checksSystem)
        MakeSystem(*system);
    StartCheck();
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

void CurrentIndex::StartCheck()
{
    projectIsCurrent = !checksProject;
    systemIsCurrent = !checksSystem;
    if (!checksProject && !checksSystem)
        return;
    const auto start = std::chrono::steady_clock::now();
    checker = vetch::StartThread("changed files are not noticed", [this] { Check(); });
    if (!checker.joinable())
        return;
    std::unique_lock lock(mutex);
    ended.wait_until(lock, start + kMoment, [this] { return projectIsCurrent || allChecked; });
    ended.wait_until(lock, start + kShortMoment, [this] { return allChecked; });
}

void CurrentIndex::Check()
{
    if (checksProject && workspace.Project()->Update({}, cancelCheck))
        Note(projectIsCurrent);
    if (checksSystem)
        CheckSystem();
    Note(allChecked);
}

void CurrentIndex::CheckSystem()
{
    const auto noteChanges = [this](const symbols::Progress& progress) {
        if (progress.step == symbols::Progress::Step::Parsing && progress.known > 0)
            Note(systemHasChanged);
    };
    if (workspace.System()->Update({noteChanges, nullptr}, cancelCheck)) {
        const std::lock_guard guard(mutex);
        systemIsCurrent = true;
        systemHasChanged = false; // the index has the changes
    }
}

void CurrentIndex::Note(bool& what)
{
    const std::lock_guard guard(mutex);
    what = true;
    ended.notify_all();
}

std::string CurrentIndex::WhyStale()
{
    const std::lock_guard guard(mutex);
    const std::string& root = workspace.Project()->Root();
    if (!projectIsCurrent)
        return "looking for changed files in " + root + " takes longer, so answers may be stale; --fresh waits for it";
    if (systemHasChanged)
        return "headers of the system have changed, so answers may be stale; update with: wren index --system";
    if (!systemIsCurrent)
        return "looking for changed headers of the system takes longer, so answers may be stale; --fresh waits for it";
    return "";
}

} // namespace wren
