#include "symbols/update/Walk.h"

#include "base/Paths.h"
#include "symbols/update/DirectoryReader.h"
#include "symbols/update/SourceNames.h"
#include "symbols/update/Surroundings.h"
#include "symbols/update/Twins.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <utility>

namespace symbols {

namespace {

struct Place {
    std::string path;                   // absolute
    std::optional<Surroundings> around; // of the directory above it; nullopt at a start
};

// The directories that are still to be read. Any thread.
class Places {
public:
    void Add(std::vector<Place>&& more)
    {
        if (more.empty())
            return;
        const std::lock_guard lock(mutex);
        std::ranges::move(more, std::back_inserter(waiting));
        changed.notify_all();
    }

    // Waits for a directory. Nullopt when there will be no more. Each one needs a Done() when it is read.
    std::optional<Place> Take()
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return !waiting.empty() || inWork == 0; });
        if (waiting.empty())
            return std::nullopt;
        Place place = std::move(waiting.back());
        waiting.pop_back();
        ++inWork;
        return place;
    }

    void Done()
    {
        const std::lock_guard lock(mutex);
        if (--inWork == 0 && waiting.empty())
            changed.notify_all();
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<Place> waiting;
    size_t inWork = 0;
};

bool IsCandidate(const WalkOptions& options, std::string_view leaf)
{
    if (options.takes)
        return options.takes(leaf);
    return IsSourceName(leaf) || (options.isSystem && CanBeHeaderWithoutSuffix(leaf));
}

// Nullopt when it is not a plain file, or is gone.
std::optional<FoundFile> Look(int directory, const char* leaf, bool isLink)
{
    struct stat status;
    if (::fstatat(directory, leaf, &status, isLink ? 0 : AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    FoundFile file;
    file.stamp = tagging::FileStamp::Of(status);
    file.device = status.st_dev;
    file.isLink = isLink;
    file.hasHardLinks = status.st_nlink > 1;
    return file;
}

// The part of a walk that one thread does.
class Walker {
public:
    Walker(const WalkOptions& options, const base::CancelToken& cancel, Places& places)
        : options(options), cancel(cancel), places(places)
    {
    }

    void Run(const std::function<void(size_t)>& progress)
    {
        while (std::optional<Place> place = places.Take()) {
            if (!cancel.IsCancelled())
                Read(*place);
            places.Done();
            if (progress)
                progress(walked.files.size());
        }
    }

    Walked walked;
    std::optional<base::Error> error;

private:
    void Read(const Place& place);
    std::optional<Surroundings> Enter(const Place& place, const DirectoryReader& reader) const;
    void AddFile(const std::optional<Surroundings>& around, const DirectoryReader& reader,
                 const DirectoryReader::Entry& entry);
    void CannotRead(const Place& place, int reason);

    const WalkOptions& options;
    const base::CancelToken& cancel;
    Places& places;
    std::string path; // of the entry in work
    size_t start = 0; // the length of the directory's path and of the "/" behind it
};

void Walker::CannotRead(const Place& place, int reason)
{
    const bool isStart = !place.around && std::ranges::find(options.starts, place.path) != options.starts.end();
    if (isStart)
        error = base::Error{"cannot read " + base::Shown(place.path.empty() ? "/" : place.path), reason};
    else if (reason != ENOENT && reason != ENOTDIR && reason != ELOOP) // it is gone, or something else by now
        walked.messages.push_back("cannot read " + base::Shown(place.path) + ": " + std::strerror(reason));
}

std::optional<Surroundings> Walker::Enter(const Place& place, const DirectoryReader& reader) const
{
    if (options.isSystem)
        return Surroundings();
    TellingNames names;
    for (const DirectoryReader::Entry& entry : reader.Entries())
        names.Add(entry.name);
    return place.around ? place.around->Inside(place.path, names) : Surroundings::OfTop(place.path, names);
}

void Walker::Read(const Place& place)
{
    if (options.enters)
        options.enters(place.path);
    const bool isStart = !place.around;
    const DirectoryReader reader(place.path.empty() ? "/" : place.path, isStart);
    if (reader.Problem() != 0)
        return CannotRead(place, reader.Problem());
    const std::optional<Surroundings> around = Enter(place, reader);
    if (!around)
        return;
    path = place.path + "/";
    start = path.size();
    std::vector<Place> inner;
    for (const DirectoryReader::Entry& entry : reader.Entries()) {
        if (cancel.IsCancelled()) // ignore files can be as long as their makers like
            return;
        path.resize(start);
        path += entry.name;
        if (entry.kind == DirectoryReader::Kind::Directory && around->TakesDirectory(path))
            inner.push_back({path, around});
        else if (entry.kind != DirectoryReader::Kind::Directory && IsCandidate(options, entry.name))
            AddFile(around, reader, entry);
    }
    places.Add(std::move(inner));
}

void Walker::AddFile(const std::optional<Surroundings>& around, const DirectoryReader& reader,
                     const DirectoryReader::Entry& entry)
{
    if (!around->TakesFile(path))
        return;
    std::optional<FoundFile> file =
        Look(reader.Number(), path.c_str() + start, entry.kind == DirectoryReader::Kind::Link);
    if (!file)
        return;
    file->path = path.substr(options.root.size() + 1);
    file->needsLook = !IsSourceName(entry.name);
    if (options.finds)
        options.finds(*file);
    else
        walked.files.push_back(std::move(*file));
}

// Reports at most ten times a second.
std::function<void(size_t)> Sparing(const std::function<void(size_t)>& progress)
{
    using Clock = std::chrono::steady_clock;
    if (!progress)
        return nullptr;
    return [progress, last = Clock::now()](size_t files) mutable {
        if (Clock::now() - last < std::chrono::milliseconds(100))
            return;
        last = Clock::now();
        progress(files);
    };
}

// Threads that the system refuses are done without.
void RunAll(std::vector<Walker>& walkers, const std::function<void(size_t)>& progress)
{
    std::vector<std::thread> threads;
    for (size_t i = 1; i < walkers.size(); ++i) {
        try {
            threads.emplace_back([&walker = walkers[i]] { walker.Run(nullptr); });
        } catch (const std::system_error&) {
            break;
        }
    }
    walkers[0].Run(Sparing(progress));
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

base::Result<Walked> Walk(const WalkOptions& options, const base::CancelToken& cancel)
{
    Places places;
    std::vector<Place> starts;
    for (const std::string& each : options.starts)
        starts.push_back({each, std::nullopt});
    places.Add(std::move(starts));
    std::vector<Walker> walkers;
    walkers.reserve(std::max(options.threads, 1u));
    while (walkers.size() < std::max(options.threads, 1u))
        walkers.emplace_back(options, cancel, places);
    RunAll(walkers, options.progress);
    Walked all;
    for (Walker& each : walkers) {
        if (each.error)
            return *each.error;
        std::ranges::move(each.walked.files, std::back_inserter(all.files));
        std::ranges::move(each.walked.messages, std::back_inserter(all.messages));
    }
    if (cancel.IsCancelled())
        return base::Error{"cancelled"};
    std::ranges::sort(all.files, {}, &FoundFile::path);
    std::ranges::sort(all.messages);
    all.twins = RemoveTwins(all.files);
    return all;
}

namespace {

bool IsRealDirectory(const std::string& path)
{
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Of the directory of 'path', from the start that is above it; nullopt when its files do not count.
std::optional<Surroundings> SurroundingsOf(const WalkOptions& options, const std::string& path)
{
    const auto start =
        std::ranges::find_if(options.starts, [&](const std::string& each) { return path.starts_with(each + "/"); });
    if (start == options.starts.end())
        return std::nullopt;
    std::optional<Surroundings> around =
        options.isSystem ? Surroundings() : Surroundings::OfTop(*start, TellingNames::Of(*start));
    for (size_t slash = path.find('/', start->size() + 1); around && slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        const std::string directory = path.substr(0, slash);
        if (!IsRealDirectory(directory) || !around->TakesDirectory(directory))
            return std::nullopt;
        if (!options.isSystem)
            around = around->Inside(directory, TellingNames::Of(directory));
    }
    return around;
}

} // namespace

std::optional<FoundFile> FindOne(const WalkOptions& options, const std::string& path)
{
    const std::string leaf = path.substr(path.rfind('/') + 1);
    if (!IsCandidate(options, leaf))
        return std::nullopt;
    const std::optional<Surroundings> around = SurroundingsOf(options, path);
    struct stat status;
    if (!around || !around->TakesFile(path) || ::lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    std::optional<FoundFile> file = Look(AT_FDCWD, path.c_str(), S_ISLNK(status.st_mode));
    if (!file)
        return std::nullopt;
    file->path = path.substr(options.root.size() + 1);
    file->needsLook = !IsSourceName(leaf);
    return file;
}

} // namespace symbols
