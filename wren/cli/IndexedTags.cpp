#include "wren/cli/IndexedTags.h"

#include "base/CancelToken.h"
#include "symbols/TagsFile.h"
#include "symbols/Workspace.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/IndexProgress.h"
#include "wren/cli/WantedSources.h"
#include "wren/core/DirectoryLock.h"
#include "wren/core/Documents.h"
#include "wren/core/Interruption.h"
#include "wren/core/TagsTarget.h"

#include <unordered_set>
#include <utility>

namespace wren {

namespace {

// Sources that the index leaves out, such as those in ignored directories, are parsed one after the other.
constexpr size_t kMostOthers = 100;

std::string TooLongText(size_t tags)
{
    const std::string fit = tags == 1 ? "1 tag fits" : std::to_string(tags) + " tags fit";
    return fit + " into no line of a tags file, and " + (tags == 1 ? "is" : "are") + " left out";
}

class Job {
public:
    Job(const TagsWanted& wanted, const symbols::WorkspaceOptions& options)
        : wanted(wanted), settings(options.tagging), workspace(options)
    {
    }

    bool HasIndex() { return workspace.Project().Current() != nullptr; }
    void Cancel() { cancel.Cancel(); }

    std::optional<TagsOutcome> Make();

private:
    bool Update();
    bool Find();
    bool TakeOthers();
    bool Write(TagsTarget& target, const std::string& unfinished);

    const TagsWanted& wanted;
    const tagging::Settings settings;
    symbols::Workspace workspace;
    base::CancelToken cancel;
    std::unordered_set<std::string> sources; // as in the index
};

bool Job::Update()
{
    IndexProgress progress("");
    return static_cast<bool>(workspace.Project().Update(progress.Listener(), cancel));
}

bool Job::Find()
{
    const std::optional<std::vector<std::string>> found = WantedSources(wanted.directory, wanted.patterns);
    if (!found)
        return false;
    for (const std::string& path : *found)
        sources.insert(workspace.PathInIndex(path));
    return true;
}

// Adds the sources that the index does not have; false when they are too many.
bool Job::TakeOthers()
{
    const symbols::SnapshotPointer snapshot = workspace.Current();
    std::vector<std::string> others;
    for (const std::string& path : sources)
        if (!snapshot->FindFile(path))
            others.push_back(path);
    if (others.size() > kMostOthers)
        return false;
    for (const std::string& path : others) {
        symbols::File file;
        file.path = path;
        std::string error;
        const std::string absolute = workspace.AbsolutePath(file);
        std::optional<std::string> text = ReadWholeFile(absolute, &error);
        if (cancel.IsCancelled() || !text || !workspace.SetOpenText(absolute, *std::move(text)))
            return false;
    }
    return true;
}

bool Job::Write(TagsTarget& target, const std::string& unfinished)
{
    symbols::TagsFileOptions options;
    options.target = unfinished;
    options.root = workspace.Project().Root();
    options.version = WREN_VERSION;
    options.jobs = settings.jobs;
    options.wants = [this](const symbols::File& file) { return sources.contains(std::string(file.path)); };
    const base::Result<symbols::TagsFileCount> written = symbols::WriteTagsFile(*workspace.Current(), options, cancel);
    // The tags program reports files whose names no tags file can hold, and that there was nothing to tag.
    const bool isWhole = written && written->unnameable == 0 && written->files > 0;
    if (isWhole && !cancel.IsCancelled() && target.Move()) {
        if (written->tooLong > 0)
            Complain(TooLongText(written->tooLong));
        return true;
    }
    if (written)
        target.RemoveUnfinished();
    return false;
}

std::optional<TagsOutcome> Job::Make()
{
    TagsOutcome outcome;
    outcome.file = wanted.directory + "/tags";
    const std::string unfinished = outcome.file + ".tmp";
    TagsTarget target(outcome.file, unfinished);
    outcome.hadFile = target.HadFile();
    if (target.Obstacle() || target.HasUnfinished() || !Update() || !Find() || !TakeOthers() ||
        !Write(target, unfinished))
        return std::nullopt;
    outcome.kind = TagsOutcome::Kind::Made;
    outcome.isNew = true;
    return outcome;
}

} // namespace

std::optional<TagsOutcome> MakeTagsFromIndex(const TagsWanted& wanted, Interruption& interruption,
                                             const std::function<void(const std::string&)>& waits)
{
    const base::Result<tagging::Settings> settings = symbols::IndexSettings();
    if (!settings)
        return std::nullopt;
    symbols::WorkspaceOptions options;
    options.root = symbols::FindRoot(wanted.directory).value_or(wanted.directory);
    options.withSystem = false;
    options.tagging = *settings;
    Job job(wanted, options);
    if (!job.HasIndex())
        return std::nullopt;
    interruption.Hold([&](int) { job.Cancel(); });
    const DirectoryLock lock(
        wanted.directory, [&] { waits(wanted.directory); }, [&] { return interruption.Signal() != 0; });
    std::optional<TagsOutcome> outcome = job.Make();
    interruption.Release();
    if (!outcome && interruption.Signal() != 0) {
        outcome.emplace();
        outcome->kind = TagsOutcome::Kind::Interrupted;
        outcome->file = wanted.directory + "/tags";
    }
    return outcome;
}

} // namespace wren
