#include "symbols/IncludedFiles.h"

#include "symbols/update/ReadSmallFile.h"
#include "symbols/update/SystemDirectories.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sys/stat.h>
#include <unordered_set>
#include <utility>

namespace symbols {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kLongestLoad(1);
constexpr size_t kMostRead = 200;
constexpr size_t kMostBytesRead = size_t(20) << 20;
constexpr size_t kMostOfOneFile = size_t(4) << 20; // bytes; what is larger is data
constexpr size_t kMostHeld = 2000;                 // files; then all are forgotten, and read when they are needed
constexpr size_t kReadAtOnce = 25;                 // files, until the first ones can be seen
constexpr size_t kMostVisited = 2000;              // files, with those that others hold
constexpr size_t kMostIncludes = 1000;             // of one file
constexpr int kMostUp = 12;                        // directories above a file, in which includes are looked for
constexpr int kMostFailures = 3;                   // of the parser, which does not work then

std::vector<std::string> SubdirectoriesOf(const std::string& directory, std::string_view inName)
{
    std::vector<std::string> found;
    std::error_code problem;
    for (fs::directory_iterator entry(directory, problem), end; !problem && entry != end; entry.increment(problem))
        if (entry->path().filename().native().find(inName) != std::string::npos)
            found.push_back(entry->path());
    std::ranges::sort(found, std::greater()); // the newest version first
    return found;
}

// Compilers also search directories inside the system's: those of the standard library and of the machine.
std::vector<std::string> DirectoriesToSearch()
{
    std::vector<std::string> found;
    for (const std::string& each : SystemDirectories()) {
        const std::vector<std::string> machines = SubdirectoriesOf(each, "-linux-");
        for (const std::string& library : {each, machines.empty() ? each : machines.front()})
            if (const std::vector<std::string> versions = SubdirectoriesOf(library + "/c++", ""); !versions.empty())
                found.push_back(versions.front());
        found.push_back(each);
        found.insert(found.end(), machines.begin(), machines.end());
    }
    return found;
}

std::string Joined(const std::string& directory, const std::string& name)
{
    return fs::path(directory + "/" + name).lexically_normal();
}

std::optional<tagging::FileStamp> StampOf(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return tagging::FileStamp::Of(status);
}

bool IsBelow(std::string_view path, std::string_view directory)
{
    return !directory.empty() && path.starts_with(directory) &&
           (directory == "/" || path.substr(directory.size()).starts_with('/'));
}

std::string ParentOf(const std::string& path)
{
    return path.substr(0, path.rfind('/'));
}

} // namespace

// One load: from a text outwards, all files of a step before those of the next.
class IncludedFiles::Walk {
public:
    Walk(IncludedFiles& files, const KnownIncludes& known, const base::CancelToken& cancel)
        : files(files), known(known), cancel(cancel)
    {
    }

    bool Run(const std::string& path)
    {
        for (const std::string& changed : RemoveChanged())
            Visit(changed);
        Visit(path);
        for (size_t i = 0; i < waiting.size() && Goes(); i++) {
            const Visited from = std::move(waiting[i]);
            for (size_t k = 0; k < std::min(from.includes.size(), kMostIncludes) && Goes(); k++)
                if (const std::optional<std::string> found = Find(from.path, from.includes[k]))
                    Visit(*found);
        }
        return hasChanged;
    }

private:
    bool Goes() const
    {
        return !cancel.IsCancelled() && seen.size() < kMostVisited && read < kMostRead && bytes < kMostBytesRead &&
               failures < kMostFailures && std::chrono::steady_clock::now() - start < kLongestLoad;
    }

    // Files that are held and have changed on the disk, but for those that are gone: these are only removed.
    std::vector<std::string> RemoveChanged()
    {
        std::vector<std::string> changed;
        std::erase_if(files.held, [&](const auto& each) {
            const std::optional<tagging::FileStamp> stamp = StampOf(each.first);
            if (stamp == each.second.stamp)
                return false;
            files.WriterFor(each.first).Remove(files.PathInIndex(each.first));
            hasChanged = true;
            if (stamp)
                changed.push_back(each.first);
            return true;
        });
        std::ranges::sort(changed);
        return changed;
    }

    void Visit(const std::string& path)
    {
        if (!seen.insert(path).second)
            return;
        if (std::optional<std::vector<std::string>> includes = known(path))
            waiting.push_back({path, std::move(*includes)});
        else if (files.held.contains(path) || Read(path))
            waiting.push_back({path, files.held[path].includes});
    }

    std::optional<std::string> Find(const std::string& from, const std::string& name) const
    {
        if (name.empty() || name.size() > 1000)
            return std::nullopt;
        if (name.starts_with('/'))
            return StampOf(name) ? std::optional(name) : std::nullopt;
        std::string directory = ParentOf(from);
        for (int up = 0; up < kMostUp && !directory.empty(); up++, directory = ParentOf(directory)) {
            for (const std::string& path : {Joined(directory, name), Joined(directory, "include/" + name)})
                if (StampOf(path))
                    return path;
            if (directory == files.root || files.IsSystem(directory))
                break;
        }
        for (const std::string& system : files.systemDirectories)
            if (const std::string path = Joined(system, name); StampOf(path))
                return path;
        return std::nullopt;
    }

    bool Read(const std::string& path)
    {
        const std::optional<tagging::FileStamp> stamp = StampOf(path);
        const std::optional<std::string> text = ReadSmallFile(path, Links::Follow, kMostOfOneFile);
        if (!stamp || !text)
            return false;
        if (++read % kReadAtOnce == 0)
            files.Publish();
        bytes += text->size();
        const auto parsed = files.parser.Parse(path, *text, tagging::TextParser::Locals::No);
        failures += !parsed;
        if (!parsed)
            return false;
        files.WriterFor(path).Put(files.PathInIndex(path), *stamp, **parsed);
        Held& held = files.held[path];
        held.stamp = *stamp;
        for (const tagging::Include& include : (*parsed)->includes)
            held.includes.emplace_back(include.name);
        hasChanged = true;
        return true;
    }

    IncludedFiles& files;
    const KnownIncludes& known;
    const base::CancelToken& cancel;
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::unordered_set<std::string> seen;
    struct Visited {
        std::string path;
        std::vector<std::string> includes;
    };
    std::vector<Visited> waiting; // their includes are followed
    size_t read = 0;
    size_t bytes = 0;
    int failures = 0;
    bool hasChanged = false;
};

IncludedFiles::IncludedFiles(std::string root, bool withSystem, const tagging::Settings& settings)
    : root(std::move(root)), withSystem(withSystem), parser(settings)
{
    Forget();
}

void IncludedFiles::Forget()
{
    held.clear();
    const auto publish = [this](SnapshotPointer IncludedFiles::*where) {
        return [this, where](SnapshotPointer made) {
            const std::lock_guard lock(mutex);
            this->*where = std::move(made);
        };
    };
    writer = WriteInMemory(nullptr, publish(&IncludedFiles::files));
    systemWriter = WriteInMemory(nullptr, publish(&IncludedFiles::filesOfSystem));
}

bool IncludedFiles::Load(const std::string& path, const KnownIncludes& known, const base::CancelToken& cancel)
{
    const std::lock_guard lock(loading);
    if (withSystem && systemDirectories.empty())
        systemDirectories = DirectoriesToSearch();
    if (held.size() > kMostHeld)
        Forget();
    if (!Walk(*this, known, cancel).Run(path))
        return false;
    Publish();
    return true;
}

void IncludedFiles::Publish()
{
    [[maybe_unused]] const bool written = writer->Commit() && systemWriter->Commit(); // memory does not fail
}

SnapshotPointer IncludedFiles::Files() const
{
    const std::lock_guard lock(mutex);
    return files;
}

SnapshotPointer IncludedFiles::FilesOfSystem() const
{
    const std::lock_guard lock(mutex);
    return filesOfSystem;
}

std::string IncludedFiles::PathInIndex(const std::string& path) const
{
    if (!IsBelow(path, root))
        return path;
    return path.substr(root == "/" ? 1 : root.size() + 1);
}

bool IncludedFiles::IsSystem(std::string_view path) const
{
    return std::ranges::any_of(systemDirectories,
                               [&](const std::string& each) { return path == each || IsBelow(path, each); });
}

Store::Writer& IncludedFiles::WriterFor(const std::string& path)
{
    return IsSystem(path) && !IsBelow(path, root) ? *systemWriter : *writer;
}

} // namespace symbols
