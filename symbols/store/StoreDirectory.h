// The directory of one index: its manifest, its segments, and the lock of its writer.
#pragma once

#include "base/CancelToken.h"
#include "base/Descriptor.h"
#include "base/NewFile.h"
#include "base/Result.h"
#include "symbols/store/Manifest.h"
#include "symbols/store/SegmentBuilder.h"
#include "symbols/store/Store.h"
#include "symbols/store/View.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace symbols {

// Any thread, as far as nothing else is said.
//
// Nothing is synchronised to the disk: after a power failure the manifest may name data that never got there. Its
// checksums show that, and an index is only a cache.
class StoreDirectory {
public:
    explicit StoreDirectory(std::string path) : path(std::move(path)) {}

    std::optional<Manifest::Version> CurrentVersion() const; // nullopt: nothing usable
    std::optional<Manifest> ReadManifest() const;

    // Opens what the manifest names; segments of 'known' are not opened again. Nullopt when a file is missing, which
    // happens when a writer has just replaced it, or damaged.
    std::optional<State> Open(const Manifest& manifest, const State& known) const;

    std::string SegmentPath(std::uint64_t id) const;

    // For the writer. Makes the directory; waits for another writer until 'cancel'.
    base::Result<base::Descriptor> Lock(const base::CancelToken& cancel) const;
    base::Result<base::Descriptor> LockForRemoval() const; // fails when there is a writer; none when there is no index
    std::optional<WritingProcess> Writing() const;         // the one that has the lock
    // The rest needs the lock.
    base::Result<std::shared_ptr<const Segment>> WriteSegment(SegmentBuilder& builder,
                                                              SegmentBuilder::Written* written) const;
    base::Result<void> WriteManifest(const Manifest& manifest) const;
    base::Result<base::NewFile> NewSegment() const;                   // to be moved to SegmentPath()
    void RemoveOthers(const std::set<std::uint64_t>& segments) const; // all files of segments but these
    base::Result<void> RemoveAll() const;

private:
    base::Result<void> Make() const;
    base::Result<base::Descriptor> OpenLock() const;

    std::string path;
};

} // namespace symbols
