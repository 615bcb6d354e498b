#include "symbols/store/Store.h"

#include "symbols/store/StoreDirectory.h"
#include "symbols/store/Writer.h"

#include <mutex>
#include <random>
#include <set>

namespace symbols {

namespace {

class DirectoryDestination : public Destination {
public:
    DirectoryDestination(StoreDirectory directory, base::Descriptor lock, StoreHeader header,
                         std::optional<Manifest> before)
        : directory(std::move(directory)), lock(std::move(lock)), header(std::move(header)),
          published(before ? std::move(*before) : Manifest())
    {
        RemoveOthers(); // what a killed writer left
    }
    ~DirectoryDestination() override { RemoveOthers(); }

    base::Result<std::shared_ptr<const Segment>> WriteSegment(SegmentBuilder& builder,
                                                              SegmentBuilder::Written* written) override
    {
        return directory.WriteSegment(builder, written);
    }

    base::Result<void> Publish(const State& state) override { return Publish(state, false); }
    base::Result<void> PublishPart(const State& state) override
    {
        const bool isComplete = published.version.generation > 0 && !published.isPart;
        return isComplete ? base::Result<void>() : Publish(state, true);
    }

private:
    base::Result<void> Publish(const State& state, bool isPart)
    {
        Manifest next;
        next.isPart = isPart;
        std::random_device random;
        next.version = {published.version.generation + 1, std::uint64_t(random()) << 32 | random()};
        next.header = header;
        for (const State::Member& member : state.members)
            next.entries.push_back({member.segment->Id(), member.segment->Size(), member.changes});
        if (const base::Result<void> written = directory.WriteManifest(next); !written)
            return written;
        published = std::move(next);
        RemoveOthers();
        return {};
    }

    void RemoveOthers() const
    {
        std::set<std::uint64_t> ids;
        for (const Manifest::Entry& entry : published.entries)
            ids.insert(entry.id);
        directory.RemoveOthers(ids);
    }

    StoreDirectory directory;
    base::Descriptor lock; // held as long as this lives
    StoreHeader header;
    Manifest published;
};

} // namespace

struct Store::Contents {
    Contents(std::string path, StoreLimits limits) : directory(std::move(path)), limits(limits) {}

    void Refresh();
    std::shared_ptr<const View> Part(const StoreHeader& header) const; // null for none

    StoreDirectory directory;
    StoreLimits limits;
    std::mutex lock;                  // of what follows
    std::optional<Manifest> manifest; // of 'snapshot'
    std::shared_ptr<const View> snapshot;
};

Store::Store(std::string directory, StoreLimits limits)
    : contents(std::make_unique<Contents>(std::move(directory), limits))
{
}

Store::~Store() = default;

// A writer removes the files that its manifest does not name. A reader that finds one missing, after it has read an
// older manifest, starts again with the newer one.
void Store::Contents::Refresh()
{
    std::optional<Manifest::Version> version = directory.CurrentVersion();
    if (manifest && version == manifest->version)
        return;
    const State known = snapshot == nullptr ? State() : snapshot->StateOfIndex();
    manifest.reset();
    snapshot.reset();
    while (version) {
        std::optional<Manifest> read = directory.ReadManifest();
        std::optional<State> state = read ? directory.Open(*read, known) : std::nullopt;
        if (state) {
            manifest = std::move(read);
            snapshot = View::Of(*state);
            return;
        }
        const std::optional<Manifest::Version> before = read ? std::optional(read->version) : version;
        version = directory.CurrentVersion();
        if (version == before)
            return; // damaged
    }
}

std::shared_ptr<const View> Store::Contents::Part(const StoreHeader& header) const
{
    const bool isOurs = manifest && manifest->isPart && manifest->header == header;
    return isOurs && snapshot != nullptr && !snapshot->IsDamaged() ? snapshot : nullptr;
}

SnapshotPointer Store::Current() const
{
    const std::lock_guard guard(contents->lock);
    contents->Refresh();
    return contents->manifest && contents->manifest->isPart ? nullptr : contents->snapshot;
}

SnapshotPointer Store::Part(const StoreHeader& header) const
{
    const std::lock_guard guard(contents->lock);
    contents->Refresh();
    return contents->Part(header);
}

std::optional<StoreHeader> Store::Header() const
{
    const std::lock_guard guard(contents->lock);
    contents->Refresh();
    const std::optional<Manifest>& manifest = contents->manifest;
    return manifest && !manifest->isPart ? std::optional(manifest->header) : std::nullopt;
}

base::Result<std::unique_ptr<Store::Writer>> Store::Write(const StoreHeader& header, bool fromNothing,
                                                          const base::CancelToken& cancel)
{
    base::Result<base::Descriptor> file = contents->directory.Lock(cancel);
    if (!file)
        return file.Failure();
    const std::lock_guard guard(contents->lock);
    contents->Refresh();
    const std::optional<Manifest>& manifest = contents->manifest;
    const bool startsNew = fromNothing || (manifest && manifest->isPart);
    const std::shared_ptr<const View> start = startsNew ? contents->Part(header) : contents->snapshot;
    const State before = start == nullptr ? State() : start->StateOfIndex();
    const bool isStale = startsNew || !manifest || manifest->header != header;
    auto destination = std::make_unique<DirectoryDestination>(contents->directory, std::move(*file), header, manifest);
    return std::unique_ptr<Writer>(
        std::make_unique<IndexWriter>(std::move(destination), before, isStale, contents->limits));
}

std::optional<WritingProcess> Store::Writing() const
{
    return contents->directory.Writing();
}

base::Result<void> Store::Remove()
{
    base::Result<base::Descriptor> file = contents->directory.LockForRemoval();
    if (!file)
        return file.Failure();
    return contents->directory.RemoveAll();
}

} // namespace symbols
