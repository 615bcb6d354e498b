// Keeps an index current while its tree changes.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/UpdateResult.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace symbols {

// Called with each directory that a walk enters, before it is read; any thread. May be null.
using EnterDirectory = std::function<void(const std::string&)>;

struct WatchedIndex {
    std::string root;                // without a "/" at the end
    std::vector<std::string> starts; // of its walks
    std::string directory;           // of the index's files; "" for none
    bool isSystem = false;
    std::function<base::Result<UpdateResult>(const EnterDirectory&)> updateAll;
    std::function<base::Result<UpdateResult>(const std::vector<std::string>&, const EnterDirectory&)> updateSome;
    std::function<void(const UpdateResult&)> changed; // after an update that has changed something; may be null
    std::function<void(const std::string&)> say;      // may be null

    // Tests have other limits. Where changes are not seen, walks look for them, in a tenth of the time at most.
    unsigned mostWatches = ~0u;
    std::chrono::milliseconds untilRetry{1000}; // after a failed update
    std::chrono::milliseconds betweenWalks{500};
};

// Returns when it is cancelled, or with the reason when the first update fails. Later ones are retried.
base::Result<void> KeepCurrent(const WatchedIndex& index, const base::CancelToken& cancel);

} // namespace symbols
