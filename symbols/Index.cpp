#include "symbols/Index.h"

#include "symbols/IndexState.h"
#include "symbols/Turns.h"
#include "symbols/Watching.h"
#include "symbols/store/IndexFile.h"
#include "symbols/update/CacheLocation.h"
#include "symbols/update/Changes.h"
#include "symbols/update/ParseInto.h"
#include "symbols/update/ParserVersion.h"
#include "symbols/update/Surroundings.h"
#include "symbols/update/SystemDirectories.h"
#include "symbols/update/Walk.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace symbols {

namespace {

// Paths are put together with a "/" behind the root.
std::string WithoutSlash(std::string root)
{
    while (root.ends_with('/'))
        root.pop_back();
    return root;
}

std::string DirectoryFor(const IndexOptions& options, const std::string& root)
{
    const std::string cache = options.cache.empty() ? UsersIndexes() : options.cache;
    const bool isSystem = options.content == IndexOptions::Content::SystemHeaders;
    return cache.empty() ? "" : DirectoryOfIndex(cache, root, isSystem);
}

bool IsDirectory(const std::string& path)
{
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Whether the index has files below this path.
bool WasDirectory(const Snapshot& snapshot, const std::string& path)
{
    bool was = false;
    if (!snapshot.FindFile(path))
        snapshot.ForEachFile([&](FileNumber, const File& file) {
            was = file.path.size() > path.size() && file.path[path.size()] == '/' && file.path.starts_with(path);
            return !was;
        });
    return was;
}

void Say(const Index::Listener& listener, const std::string& message)
{
    if (listener.say)
        listener.say(message);
}

} // namespace

struct Index::Contents {
    explicit Contents(IndexOptions given)
        : options(std::move(given)), root(WithoutSlash(options.root)),
          isSystem(options.content == IndexOptions::Content::SystemHeaders), directory(DirectoryFor(options, root)),
          state(directory)
    {
        options.root = root.empty() ? "/" : root;
        options.tagging.ctags.prototypes = true;
    }

    using FindChanges = std::function<Changes(const SnapshotPointer& before)>;

    base::Result<StoreHeader> Header(const base::CancelToken& cancel) const;
    WalkOptions WalkFrom(const Listener& listener) const;
    base::Result<UpdateResult> UpdateAll(const Listener& listener, const EnterDirectory& enters,
                                         const base::CancelToken& cancel);
    base::Result<UpdateResult> UpdateSome(const std::vector<std::string>& paths, const Listener& listener,
                                          const EnterDirectory& enters, const base::CancelToken& cancel);
    base::Result<UpdateResult> Apply(const FindChanges& findChanges, const Listener& listener,
                                     const base::CancelToken& cancel);
    base::Result<bool> Carry(const Changes& changes, const Attempt& attempt, UpdateResult& result,
                             const Listener& listener, const base::CancelToken& cancel) const;
    bool NeedsWalk(const std::string& path) const;

    IndexOptions options;
    const std::string root; // without a "/" at the end
    const bool isSystem;
    const std::string directory;
    IndexState state;
    Turns updates;
    std::set<std::string> twins; // of the last walk; for the update whose turn it is
};

base::Result<StoreHeader> Index::Contents::Header(const base::CancelToken& cancel) const
{
    base::Result<std::string> parsers = DescribeParsers(options.tagging, isSystem, cancel);
    if (!parsers)
        return parsers.Failure();
    return StoreHeader{options.root, std::move(*parsers)};
}

WalkOptions Index::Contents::WalkFrom(const Listener& listener) const
{
    WalkOptions walk;
    walk.root = root;
    walk.starts = !isSystem                     ? std::vector{root}
                  : options.directories.empty() ? SystemDirectories()
                                                : options.directories;
    walk.isSystem = isSystem;
    if (listener.progress)
        walk.progress = [&listener](size_t files) { listener.progress({Progress::Step::Walking, files, files}); };
    return walk;
}

base::Result<UpdateResult> Index::Contents::UpdateAll(const Listener& listener, const EnterDirectory& enters,
                                                      const base::CancelToken& cancel)
{
    WalkOptions walk = WalkFrom(listener);
    walk.enters = enters;
    base::Result<Walked> walked = Walk(walk, cancel);
    if (!walked)
        return walked.Failure();
    for (const std::string& message : walked->messages)
        Say(listener, message);
    twins = std::move(walked->twins);
    const auto findChanges = [&](const SnapshotPointer& before) {
        return ChangesOfTree(before.get(), walked->files, root, cancel);
    };
    return Apply(findChanges, listener, cancel);
}

// Whether the change of this path may affect other files than itself.
bool Index::Contents::NeedsWalk(const std::string& path) const
{
    const std::string leaf = path.substr(path.rfind('/') + 1);
    return TellingNames::IsOne(leaf) || IsDirectory(path) || twins.contains(path.substr(root.size() + 1));
}

base::Result<UpdateResult> Index::Contents::UpdateSome(const std::vector<std::string>& paths, const Listener& listener,
                                                       const EnterDirectory& enters, const base::CancelToken& cancel)
{
    const base::Result<StoreHeader> header = Header(cancel);
    if (!header)
        return header.Failure();
    const SnapshotPointer current = state.Usable(*header);
    if (current == nullptr)
        return UpdateAll(listener, enters, cancel);
    const WalkOptions walk = WalkFrom(listener);
    std::vector<std::pair<std::string, std::optional<FoundFile>>> files;
    for (const std::string& path : std::set(paths.begin(), paths.end())) {
        if (!path.starts_with(root + "/"))
            continue;
        std::optional<FoundFile> found = FindOne(walk, path);
        const std::string relative = path.substr(root.size() + 1);
        if (NeedsWalk(path) || (!found && WasDirectory(*current, relative)) ||
            (found && (found->isLink || found->hasHardLinks)))
            return UpdateAll(listener, enters, cancel);
        files.emplace_back(relative, std::move(found));
    }
    const auto findChanges = [&](const SnapshotPointer& before) {
        Changes changes;
        for (const auto& [path, found] : files)
            AddChangesOfFile(changes, *before, path, found, root);
        return changes;
    };
    return Apply(findChanges, listener, cancel);
}

// Most updates find nothing to do, and then keep no other process from writing.
base::Result<UpdateResult> Index::Contents::Apply(const FindChanges& findChanges, const Listener& listener,
                                                  const base::CancelToken& cancel)
{
    UpdateResult result;
    const base::Result<StoreHeader> header = Header(cancel);
    if (!header)
        return header.Failure();
    const SnapshotPointer known = state.Usable(*header);
    Changes changes = findChanges(known);
    if (cancel.IsCancelled())
        return base::Error{"cancelled"};
    if (known != nullptr && changes.IsEmpty()) {
        result.inMemory = state.IsInMemory();
        return result;
    }
    const auto work = [&](const Attempt& attempt) {
        if (attempt.before != known)
            changes = findChanges(attempt.before);
        return Carry(changes, attempt, result, listener, cancel);
    };
    base::Result<std::string> warning = state.Write(*header, work, listener.keepsPart, cancel);
    if (!warning)
        return warning.Failure();
    result.warning = std::move(*warning);
    result.inMemory = state.IsInMemory();
    return result;
}

base::Result<bool> Index::Contents::Carry(const Changes& changes, const Attempt& attempt, UpdateResult& result,
                                          const Listener& listener, const base::CancelToken& cancel) const
{
    result.rebuilt = attempt.isFirst;
    if (!result.rebuilt && changes.IsEmpty())
        return false;
    ParsingListener parsing;
    parsing.say = listener.say;
    if (listener.progress)
        parsing.progress = [&listener](size_t done, size_t known) {
            listener.progress({Progress::Step::Parsing, done, known});
        };
    const base::Result<ParsedFiles> parsed = ParseInto(attempt, changes, root, options.tagging, parsing, cancel);
    if (!parsed)
        return parsed.Failure();
    result.parsed = parsed->parsed;
    result.failed = parsed->failed;
    result.removed = changes.remove.size() + parsed->removed;
    if (listener.progress)
        listener.progress({Progress::Step::Writing, changes.parse.size(), changes.parse.size()});
    return result.rebuilt || result.parsed + result.removed > 0 || !changes.touch.empty();
}

Index::Index(IndexOptions options) : contents(std::make_unique<Contents>(std::move(options))) {}

Index::~Index() = default;

const std::string& Index::Root() const
{
    return contents->options.root;
}

std::string Index::Directory() const
{
    return contents->directory;
}

SnapshotPointer Index::Current() const
{
    return contents->state.Current();
}

base::Result<UpdateResult> Index::Update(const Listener& listener, const base::CancelToken& cancel)
{
    const Turns::Turn turn = contents->updates.Take(cancel);
    return turn ? contents->UpdateAll(listener, nullptr, cancel) : base::Error{"cancelled"};
}

base::Result<UpdateResult> Index::UpdateFiles(const std::vector<std::string>& paths, const Listener& listener,
                                              const base::CancelToken& cancel)
{
    const Turns::Turn turn = contents->updates.Take(cancel);
    return turn ? contents->UpdateSome(paths, listener, nullptr, cancel) : base::Error{"cancelled"};
}

std::optional<WritingProcess> Index::Writing() const
{
    return contents->state.Writing();
}

base::Result<void> Index::Remove()
{
    const base::CancelToken never;
    const Turns::Turn turn = contents->updates.Take(never);
    return contents->state.Remove();
}

base::Result<void> Index::Export(const std::string& file, const base::CancelToken& cancel) const
{
    if (contents->state.IsInMemory())
        return base::Error{"the index is only in memory"};
    return ExportIndex(contents->directory, file, cancel);
}

base::Result<void> Index::Import(const std::string& file, const base::CancelToken& cancel)
{
    const Turns::Turn turn = contents->updates.Take(cancel);
    if (!turn)
        return base::Error{"cancelled"};
    const base::Result<StoreHeader> header = contents->Header(cancel);
    return header ? contents->state.Import(file, *header, cancel) : header.Failure();
}

base::Result<void> Index::Watch(const Listener& listener, const std::function<void(const UpdateResult&)>& changed,
                                const base::CancelToken& cancel)
{
    WatchedIndex watched;
    watched.root = contents->root;
    watched.starts = contents->WalkFrom(listener).starts;
    watched.isSystem = contents->isSystem;
    watched.directory = contents->directory;
    watched.updateAll = [&](const EnterDirectory& enters) -> base::Result<UpdateResult> {
        const Turns::Turn turn = contents->updates.Take(cancel);
        return turn ? contents->UpdateAll(listener, enters, cancel) : base::Error{"cancelled"};
    };
    watched.updateSome = [&](const std::vector<std::string>& paths,
                             const EnterDirectory& enters) -> base::Result<UpdateResult> {
        const Turns::Turn turn = contents->updates.Take(cancel);
        return turn ? contents->UpdateSome(paths, listener, enters, cancel) : base::Error{"cancelled"};
    };
    watched.changed = changed;
    watched.say = listener.say;
    return KeepCurrent(watched, cancel);
}

} // namespace symbols
