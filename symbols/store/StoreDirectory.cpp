#include "symbols/store/StoreDirectory.h"

#include "base/FileIdentity.h"
#include "base/PlainFile.h"
#include "symbols/store/FileBytes.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace symbols {

namespace {

constexpr char kManifest[] = "/manifest";
constexpr char kLock[] = "/lock";
constexpr char kNew[] = "new-"; // files that are not complete yet
constexpr char kSuffix[] = ".segment";
constexpr size_t kLongestNumber = 16;
constexpr int kLockInterval = 20; // milliseconds between two tries

std::string SegmentName(std::uint64_t id)
{
    char name[32];
    std::snprintf(name, sizeof(name), "%016llx%s", static_cast<unsigned long long>(id), kSuffix);
    return name;
}

// In the lock's file, for people who wonder what is going on. Without room on the disk, they learn less.
void WriteOwnNumber(int lock)
{
    const std::string text = std::to_string(::getpid()) + '\n';
    if (::ftruncate(lock, 0) != 0 || ::pwrite(lock, text.data(), text.size(), 0) < 0)
        return;
}

int NumberIn(int lock)
{
    char text[kLongestNumber];
    const ssize_t size = ::pread(lock, text, sizeof(text), 0);
    int number = 0;
    std::from_chars(text, text + std::max(size, ssize_t(0)), number);
    return std::max(number, 0);
}

} // namespace

std::string StoreDirectory::SegmentPath(std::uint64_t id) const
{
    return path + '/' + SegmentName(id);
}

std::optional<Manifest::Version> StoreDirectory::CurrentVersion() const
{
    const base::Descriptor file(base::OpenPlainFile((path + kManifest).c_str()));
    char head[Manifest::kHead];
    if (!file.IsOpen() || ::pread(file.Number(), head, sizeof(head), 0) != sizeof(head))
        return std::nullopt;
    return Manifest::ReadVersion({head, sizeof(head)});
}

std::optional<Manifest> StoreDirectory::ReadManifest() const
{
    const base::Descriptor file(base::OpenPlainFile((path + kManifest).c_str()));
    struct stat status = {};
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0)
        return std::nullopt;
    const base::Result<std::string> content = ReadWhole(file.Number(), static_cast<size_t>(status.st_size));
    return content ? Manifest::Read(*content) : std::nullopt;
}

std::optional<State> StoreDirectory::Open(const Manifest& manifest, const State& known) const
{
    State state;
    state.otherBytes = manifest.Written().size();
    for (const Manifest::Entry& entry : manifest.entries) {
        const auto found = std::ranges::find_if(
            known.members, [&](const State::Member& member) { return member.segment->Id() == entry.id; });
        std::shared_ptr<const Segment> segment = found == known.members.end() ? nullptr : found->segment;
        if (segment == nullptr) {
            auto opened = Segment::Open(SegmentPath(entry.id), entry.size);
            if (!opened)
                return std::nullopt;
            segment = *opened;
        }
        if (segment->Id() != entry.id || entry.changes->dead.size() > segment->FileCount())
            return std::nullopt;
        state.members.push_back({std::move(segment), entry.changes});
    }
    return state;
}

base::Result<void> StoreDirectory::Make() const
{
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::path(path).parent_path();
    std::filesystem::create_directories(parent, error);
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST)
        return base::SystemError("cannot make " + path);
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return base::Error{path + " is not a directory"};
    // It tells what the user works on.
    if ((status.st_mode & 0777) != 0700 && ::chmod(path.c_str(), 0700) != 0)
        return base::SystemError("cannot protect " + path);
    return {};
}

base::Result<base::Descriptor> StoreDirectory::OpenLock() const
{
    base::Descriptor file(::open((path + kLock).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.IsOpen())
        return base::SystemError("cannot write in " + path);
    return file;
}

// Remove() deletes the lock's file, too: a lock on a deleted file protects nothing.
base::Result<base::Descriptor> StoreDirectory::Lock(const base::CancelToken& cancel) const
{
    for (;;) {
        if (const base::Result<void> made = Make(); !made)
            return made.Failure();
        base::Result<base::Descriptor> file = OpenLock();
        if (!file && file.Failure().number == ENOENT)
            continue; // the directory was removed at this moment
        if (!file)
            return file;
        if (::flock(file->Number(), LOCK_EX | LOCK_NB) == 0) {
            if (!base::IsStillAt(file->Number(), path + kLock))
                continue;
            WriteOwnNumber(file->Number());
            return file;
        }
        if (errno != EWOULDBLOCK && errno != EINTR)
            return base::SystemError("cannot lock " + path);
        pollfd wait = {cancel.Descriptor(), POLLIN, 0};
        ::poll(&wait, 1, kLockInterval);
        if (cancel.IsCancelled())
            return base::Error{"cancelled while waiting for another update of " + path};
    }
}

base::Result<base::Descriptor> StoreDirectory::LockForRemoval() const
{
    base::Descriptor file(::open((path + kLock).c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
    if (!file.IsOpen() && errno == ENOENT)
        return file;
    if (!file.IsOpen() || ::flock(file.Number(), LOCK_EX | LOCK_NB) != 0)
        return base::SystemError(errno == EWOULDBLOCK ? path + " is being updated" : "cannot lock " + path);
    return file;
}

std::optional<WritingProcess> StoreDirectory::Writing() const
{
    const base::Descriptor file(base::OpenPlainFile((path + kLock).c_str()));
    struct stat status = {};
    if (!file.IsOpen() || ::flock(file.Number(), LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK ||
        ::fstat(file.Number(), &status) != 0)
        return std::nullopt;
    return WritingProcess{NumberIn(file.Number()), std::chrono::system_clock::from_time_t(status.st_mtime)};
}

base::Result<base::NewFile> StoreDirectory::NewSegment() const
{
    return base::NewFile::MakeUnique(path + '/' + kNew);
}

base::Result<std::shared_ptr<const Segment>> StoreDirectory::WriteSegment(SegmentBuilder& builder,
                                                                          SegmentBuilder::Written* written) const
{
    base::Result<base::NewFile> file = NewSegment();
    if (!file)
        return file.Failure();
    SegmentSink sink(file->Number());
    base::Result<SegmentBuilder::Written> result = builder.Write(sink);
    if (!result)
        return base::Error{"cannot write in " + path + ": " + result.Failure().Message()};
    *written = std::move(*result);
    if (const auto moved = file->MoveTo(SegmentPath(written->id)); !moved)
        return moved.Failure();
    return Segment::Open(SegmentPath(written->id), written->size);
}

base::Result<void> StoreDirectory::WriteManifest(const Manifest& manifest) const
{
    base::Result<base::NewFile> file = base::NewFile::MakeUnique(path + '/' + kNew);
    if (!file)
        return file.Failure();
    if (const auto written = base::WriteAll(file->Number(), manifest.Written()); !written)
        return base::Error{"cannot write in " + path + ": " + written.Failure().Message()};
    return file->MoveTo(path + kManifest);
}

void StoreDirectory::RemoveOthers(const std::set<std::uint64_t>& segments) const
{
    std::set<std::string> kept;
    for (const std::uint64_t id : segments)
        kept.insert(SegmentName(id));
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(path, error)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with(kNew) || (name.ends_with(kSuffix) && !kept.contains(name)))
            ::unlink(entry.path().c_str());
    }
}

// The manifest goes first, so that no reader finds it without its segments for long; the lock goes last.
base::Result<void> StoreDirectory::RemoveAll() const
{
    if (::unlink((path + kManifest).c_str()) != 0 && errno != ENOENT)
        return base::SystemError("cannot remove " + path + kManifest);
    RemoveOthers({});
    ::unlink((path + kLock).c_str());
    if (::rmdir(path.c_str()) != 0 && errno != ENOENT)
        return base::SystemError("cannot remove " + path);
    return {};
}

} // namespace symbols
