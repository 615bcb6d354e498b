// Remembers which tags files are in order.
#pragma once

#include "base/FileIdentity.h"

#include <array>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <sys/types.h>

namespace tagsfile {

struct FileOrder {
    bool namesInOrder = false; // see NameOrder
    off_t headSize = 0;        // bytes of the pseudo-tags before the ordered lines

    bool operator==(const FileOrder&) const = default;
};

// Kept in this process and, in one small cache file each, for the user's other processes. Cache files are replaced as a
// whole and checked when read: if one is lost or damaged, a tags file is read to its end once more. No errors are
// reported.
//
// Any thread. A leaf lock: no other code is called while it is held.
class KnownFiles {
public:
    // Smaller files are remembered in this process only: reading them takes no longer.
    static constexpr off_t kWorthKeeping = 64 * 1024;
    static constexpr size_t kMostKept = 100; // in the directory; the oldest are removed

    // 'directory' and its parent need not exist; "" for none.
    explicit KnownFiles(std::string directory);
    KnownFiles(const KnownFiles&) = delete;
    KnownFiles& operator=(const KnownFiles&) = delete;

    // The user's: "declaration" in $XDG_CACHE_HOME or ~/.cache, as set at the first call.
    static KnownFiles& Instance();

    std::optional<FileOrder> Find(const base::FileIdentity& file);
    void Remember(const base::FileIdentity& file, const FileOrder& order);
    void Forget(const base::FileIdentity& file);

private:
    struct Known {
        base::FileIdentity file;
        FileOrder order;
    };

    std::optional<FileOrder> FindHere(const base::FileIdentity& file);
    void RememberHere(const base::FileIdentity& file, const FileOrder& order);
    void Keep(const base::FileIdentity& file, const FileOrder& order) const;
    std::string PathFor(const base::FileIdentity& file) const;

    static constexpr size_t kMostHere = 64;

    const std::string directory;
    std::mutex lock; // for all members below
    std::array<Known, kMostHere> known;
    size_t oldest = 0; // the next to be overwritten
};

} // namespace tagsfile
