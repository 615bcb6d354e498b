#include "wren/cli/IndexedTags.h"

#include "base/CancelToken.h"
#include "base/DirectoryLock.h"
#include "symbols/TagsFile.h"
#include "symbols/Workspace.h"
#include "symbols/store/Store.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/IndexProgress.h"
#include "wren/cli/WantedSources.h"
#include "wren/core/Documents.h"
#include "wren/core/Interruption.h"
#include "wren/core/TagsTarget.h"

#include <algorithm>
#include <memory>
#include <sys/stat.h>
#include <unordered_set>
#include <utility>

namespace wren {

namespace {

// Sources that the index leaves out, such as links and those in ignored directories, are parsed one after the other. A
// whole run is faster when they are many.
size_t MostOthers(size_t sources)
{
    return std::max<size_t>(100, sources / 20);
}

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

    bool HasIndex() { return workspace.Project()->Current() != nullptr; }
    void Cancel() { cancel.Cancel(); }

    std::optional<TagsOutcome> Make();

private:
    bool Find();
    bool IsWorthAnUpdate();
    bool HasFailed(const symbols::File& file) const;
    bool Update();
    bool TakeOthers();
    std::shared_ptr<const symbols::OpenText> Parse(const std::string& path);
    bool Write(TagsTarget& target, const std::string& unfinished);

    const TagsWanted& wanted;
    const tagging::Settings settings;
    symbols::Workspace workspace;
    base::CancelToken cancel;
    std::unordered_set<std::string> sources; // relative to the root, as in the index
    symbols::SnapshotPointer all;            // the index, and the sources that it does not have
};

// The tags file names each source by its own path, also one that the index has under another path.
bool Job::Find()
{
    const std::optional<std::vector<std::string>> found = WantedSources(wanted.directory, wanted.patterns);
    const std::string& root = workspace.Project()->Root();
    const std::string start = root == "/" ? root : root + "/";
    if (!found)
        return false;
    for (const std::string& path : *found) {
        if (!path.starts_with(start))
            return false;
        sources.insert(path.substr(start.size()));
    }
    return true;
}

// Whether ctags failed on the file as it is now.
bool Job::HasFailed(const symbols::File& file) const
{
    struct stat status;
    return file.isIncomplete && ::stat(workspace.AbsolutePath(file).c_str(), &status) == 0 &&
           tagging::FileStamp::Of(status) == file.stamp;
}

// An index that knows few of the sources would parse most of them, and perhaps leave most of them out again. The tags
// program tries a source again on which ctags failed, and reports it.
bool Job::IsWorthAnUpdate()
{
    const symbols::SnapshotPointer before = workspace.Project()->Current();
    if (before == nullptr)
        return false;
    size_t known = 0;
    for (const std::string& path : sources) {
        const std::optional<symbols::FileNumber> file = before->FindFile(path);
        known += file.has_value();
        if (file && HasFailed(before->FileOf(*file)))
            return false;
    }
    return known >= sources.size() / 2;
}

bool Job::Update()
{
    IndexProgress progress("");
    return static_cast<bool>(workspace.Project()->Update(progress.Listener(), cancel));
}

// Adds the sources that the index does not have; false when they are too many, or when ctags failed on any source.
bool Job::TakeOthers()
{
    const symbols::SnapshotPointer project = workspace.Project()->Current();
    if (project == nullptr)
        return false;
    std::vector<std::string> others;
    for (const std::string& path : sources) {
        const std::optional<symbols::FileNumber> file = project->FindFile(path);
        if (!file)
            others.push_back(path);
        else if (project->FileOf(*file).isIncomplete)
            return false;
    }
    if (others.size() > MostOthers(sources.size())) {
        Complain("the index leaves out " + std::to_string(others.size()) + " of " + std::to_string(sources.size()) +
                 " sources, such as ignored ones, so all are parsed");
        return false;
    }
    std::vector<std::shared_ptr<const symbols::OpenText>> texts;
    for (const std::string& path : others) {
        texts.push_back(Parse(path));
        if (cancel.IsCancelled() || texts.back() == nullptr)
            return false;
    }
    all = symbols::Combined(project, nullptr, "/", texts);
    return true;
}

// Null when it cannot be read or parsed.
std::shared_ptr<const symbols::OpenText> Job::Parse(const std::string& path)
{
    symbols::File file;
    file.path = path;
    const std::string absolute = workspace.AbsolutePath(file);
    std::string error;
    std::optional<std::string> text = ReadWholeFile(absolute, &error);
    if (!text)
        return nullptr;
    const auto parsed = workspace.Parser().Parse(absolute, *text, tagging::TextParser::Locals::No);
    return parsed ? std::make_shared<symbols::OpenText>(path, *std::move(text), **parsed) : nullptr;
}

bool Job::Write(TagsTarget& target, const std::string& unfinished)
{
    symbols::TagsFileOptions options;
    options.target = unfinished;
    options.root = workspace.Project()->Root();
    options.version = WREN_VERSION;
    options.jobs = settings.jobs;
    options.wants = [this](const symbols::File& file) { return sources.contains(std::string(file.path)); };
    const base::Result<symbols::TagsFileCount> written = symbols::WriteTagsFile(*all, options, cancel);
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
    // What refuses at little cost comes first.
    if (target.Obstacle() || target.HasUnfinished() || !Find() || !IsWorthAnUpdate() || !Update() || !TakeOthers() ||
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
    const base::DirectoryLock lock(
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
