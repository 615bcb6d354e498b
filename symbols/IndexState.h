// Where an index is kept: in its directory, or in memory when that cannot be written.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/store/Store.h"
#include "symbols/update/Attempt.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace symbols {

// Any thread. One update at a time.
class IndexState {
public:
    // 'directory': of the index; "" keeps it in memory only.
    explicit IndexState(const std::string& directory);

    SnapshotPointer Current() const;

    // The current state if it can be continued; null when it has to be made from nothing: there is none, it is damaged,
    // or made for other sources or by other parsers.
    SnapshotPointer Usable(const StoreHeader& header) const;

    // Work on a new state. Returns false when nothing is to be written after all.
    using Work = std::function<base::Result<bool>(const Attempt&)>;

    // Does the work on the disk or, when that fails for the disk's sake, in memory; the work may run twice. The warning
    // then says why; "" when all is on the disk.
    // 'keepsPart' is asked when the first state is cancelled: whether the next one goes on from there.
    using KeepsPart = std::function<bool()>;
    base::Result<std::string> Write(const StoreHeader& header, const Work& work, const KeepsPart& keepsPart,
                                    const base::CancelToken& cancel);

    base::Result<void> Import(const std::string& file, const StoreHeader& header, const base::CancelToken& cancel);

    std::optional<WritingProcess> Writing() const; // its files
    bool IsInMemory() const;
    base::Result<void> Remove();

private:
    struct Outcome {
        base::Result<bool> result; // of the work
        std::string problem;       // of the disk; "" when it was written
    };

    using Clock = std::chrono::steady_clock;

    SnapshotPointer UsableOnDisk(const StoreHeader& header) const;
    base::Result<void> CanUseDisk() const;
    base::Result<std::unique_ptr<Store::Writer>> DiskWriter(const StoreHeader& header, SnapshotPointer& before,
                                                            bool& isFirst, const base::CancelToken& cancel);
    Outcome WriteOnDisk(const StoreHeader& header, const Work& work, const KeepsPart& keepsPart,
                        const base::CancelToken& cancel);
    base::Result<bool> WriteMemory(const StoreHeader& header, const Work& work);

    const std::string directory;
    const std::unique_ptr<Store> store; // null without a directory
    mutable std::mutex mutex;           // for the rest
    SnapshotPointer memory;             // counts instead of the disk's state, if there is one
    StoreHeader memorysHeader;
    std::string lastProblem; // of the disk
    Clock::time_point nextTry;
};

} // namespace symbols
