#include "wren/projects/Project.h"

#include "resolve/Resolver.h"
#include "wren/symbols/WorkspaceSources.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <malloc.h>
#include <utility>

namespace wren {

namespace {

std::string Counted(std::uint64_t count, const std::string& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

Project::Project(symbols::WorkspaceOptions options, bool isIndexed, std::vector<std::string> tags,
                 IndexListener listener)
    : root(options.root), isIndexed(isIndexed), listener(std::move(listener)), workspace(std::move(options)),
      tags(std::move(tags))
{
}

Project::~Project()
{
    EndIndexing();
    if (thread.joinable())
        thread.join();
}

void Project::StartIndexing()
{
    isIndexing = true;
    thread = std::thread([this] { Run(); });
}

void Project::EndIndexing()
{
    ending.Cancel();
    const std::lock_guard lock(turn);
    ends = true;
    if (round != nullptr)
        round->Cancel();
    changed.notify_all();
}

void Project::CancelIndexing()
{
    const std::lock_guard lock(turn);
    if (round != nullptr)
        round->Cancel();
}

void Project::ResumeIndexing()
{
    const std::lock_guard lock(turn);
    resumes = resumes || round == nullptr || round->IsCancelled();
    changed.notify_all();
}

// Waits until there is work; null at the end.
Project::CancelPointer Project::NextRound()
{
    std::unique_lock lock(turn);
    round = nullptr;
    isIndexing = resumes && !ends;
    changed.wait(lock, [this] { return ends || resumes; });
    if (ends)
        return nullptr;
    isIndexing = true;
    resumes = false;
    round = std::make_shared<base::CancelToken>();
    return round;
}

void Project::Run()
{
    while (const CancelPointer cancel = NextRound())
        KeepCurrent(cancel);
    isIndexing = false;
}

void Project::KeepCurrent(const CancelPointer& cancel)
{
    if (isIndexed && !Update(*workspace.Project(), "Indexing " + root, cancel))
        return;
    // Beside the rest, since it takes long: changes of the project are seen meanwhile.
    std::future<void> system = std::async([this, cancel] {
        if (workspace.System() != nullptr)
            Update(*workspace.System(), "Indexing the headers of the system", cancel);
        isIndexing = false;
    });
    const bool isBeside = system.wait_for(std::chrono::seconds(0)) != std::future_status::deferred; // else no thread
    if (!isBeside || !isIndexed)
        system.get();
    if (isIndexed && !cancel->IsCancelled())
        WatchProject(cancel);
}

void Project::WatchProject(const CancelPointer& cancel)
{
    std::shared_ptr<ShownWork> shown;
    const auto ended = [&](const symbols::UpdateResult&) {
        if (shown != nullptr)
            shown->End("");
        shown = nullptr;
    };
    const base::Result<void> watched =
        workspace.Project()->Watch(Steps("Indexing changes in " + root, cancel, shown), ended, *cancel);
    ended({});
    if (!watched && !cancel->IsCancelled())
        listener.warn(watched.Failure().Message());
}

// 'shown' is null until the work proves to be long.
symbols::Index::Listener Project::Steps(const std::string& title, const CancelPointer& cancel,
                                        std::shared_ptr<ShownWork>& shown)
{
    constexpr size_t kMany = 200; // files
    symbols::Index::Listener steps;
    steps.progress = [this, title, cancel, &shown](const symbols::Progress& progress) {
        const bool isWalking = progress.step == symbols::Progress::Step::Walking;
        done = isWalking ? 0 : progress.done;
        total = progress.known;
        if (shown == nullptr && !isWalking && progress.known >= kMany)
            shown = listener.begin(title, [cancel] { cancel->Cancel(); });
        if (shown == nullptr)
            return;
        if (isWalking)
            shown->Report(Counted(progress.known, "file"), 0, 0);
        else
            shown->Report(std::to_string(progress.done) + " of " + Counted(progress.known, "file"), progress.done,
                          progress.known);
    };
    // At the end of the program nobody waits for that.
    steps.keepsPart = [this] { return !ending.IsCancelled(); };
    return steps;
}

bool Project::Update(symbols::Index& index, const std::string& title, const CancelPointer& cancel)
{
    std::shared_ptr<ShownWork> shown;
    if (index.Current() == nullptr)
        shown = listener.begin(title, [cancel] { cancel->Cancel(); });
    const base::Result<symbols::UpdateResult> result = index.Update(Steps(title, cancel, shown), *cancel);
    if (shown != nullptr) {
        ::malloc_trim(0); // a first index takes hundreds of megabytes, which the allocator keeps
        const symbols::SnapshotPointer now = index.Current();
        const symbols::Snapshot::Size size = now == nullptr ? symbols::Snapshot::Size() : now->Totals();
        shown->End(result ? Counted(size.files, "file") + ", " + Counted(size.symbols, "symbol") : "not complete");
    }
    if (!result && !cancel->IsCancelled())
        listener.warn(result.Failure().Message());
    else if (result && !result->warning.empty())
        listener.warn(result->warning);
    return static_cast<bool>(result);
}

Project::Activity Project::Now() const
{
    return {isIndexing, done, total};
}

base::Result<void> Project::Refresh(const std::vector<std::string>& paths, const base::CancelToken& cancel)
{
    if (!isIndexed || workspace.Project() == nullptr)
        return {};
    const base::Result<symbols::UpdateResult> updated =
        paths.empty() ? workspace.Project()->Update({}, cancel) : workspace.Project()->UpdateFiles(paths, {}, cancel);
    return updated ? base::Result<void>() : updated.Failure();
}

void Project::TextChanged(const std::string& path, OpenText text)
{
    const std::lock_guard lock(mutex);
    unsettled[path] = std::move(text);
}

void Project::TextClosed(const std::string& path)
{
    TextChanged(path, {});
}

void Project::Settle(const std::string& except)
{
    const std::lock_guard one(settling);
    std::map<std::string, OpenText> taken;
    {
        const std::lock_guard lock(mutex);
        const auto own = unsettled.find(except);
        const bool isOpen = own != unsettled.end() && own->second.content != nullptr;
        auto kept = isOpen ? unsettled.extract(own) : decltype(unsettled)::node_type();
        taken.swap(unsettled);
        unsettled.insert(std::move(kept));
    }
    for (const auto& [path, text] : taken)
        Settle(path, text);
}

bool Project::SettleOne()
{
    const std::lock_guard one(settling);
    std::map<std::string, OpenText>::node_type taken;
    {
        const std::lock_guard lock(mutex);
        if (unsettled.empty())
            return false;
        taken = unsettled.extract(unsettled.begin());
    }
    Settle(taken.key(), taken.mapped());
    if (taken.mapped().content != nullptr)
        while (!ending.IsCancelled() && workspace.LoadIncluded(taken.key(), ending)) {
        }
    return true;
}

void Project::Prepare(const std::string& path, const base::CancelToken& cancel)
{
    {
        const std::lock_guard one(preparing);
        WarnOf(hasTags ? workspace.RefreshTagsFiles(cancel) : workspace.SetTagsFiles(tags, cancel));
        if (!hasTags && !tags.empty())
            ::malloc_trim(0); // reading takes more than what is kept, and the allocator keeps that too
        hasTags = true;
    }
    const bool isComplete = workspace.Project() != nullptr && workspace.Project()->Current() != nullptr;
    if (isComplete || IsPrepared(path))
        return;
    const std::lock_guard one(loading);
    if (IsPrepared(path)) // by whoever held the lock
        return;
    Settle(""); // the text decides what it includes
    workspace.LoadIncluded(path, cancel);
    const std::lock_guard lock(preparing);
    if (!cancel.IsCancelled()) // else it has ended early, and the next question goes on
        prepared.insert(path);
}

bool Project::IsPrepared(const std::string& path)
{
    const std::lock_guard lock(preparing);
    return prepared.contains(path);
}

void Project::WarnOf(const symbols::Workspace::TagsProblems& problems)
{
    for (const auto& [file, sentence] : problems)
        listener.warn(sentence);
}

void Project::ReadAhead(const std::string& path, const OpenText& text)
{
    if (text.content == nullptr)
        return;
    const std::string place = workspace.PathInIndex(path);
    const WorkspaceSources sources(workspace);
    const symbols::SnapshotPointer snapshot = workspace.CurrentFor(place);
    resolve::Resolver(*snapshot, sources, workspace.Parser(), &texts)
        .ReadAhead({place, *text.content, 0, text.language});
}

void Project::Settle(const std::string& path, const OpenText& text)
{
    if (text.content == nullptr)
        return workspace.CloseText(path);
    const resolve::ParsedTextPointer parsed =
        texts.Get(workspace.PathInIndex(path), *text.content, workspace.Parser(), text.language);
    workspace.SetOpenText(path, *text.content, *parsed->parsed);
    if (parsed->problem)
        listener.warn(parsed->problem->Message());
}

} // namespace wren
