// Which tags files are in order, as far as anybody has read them to their ends.
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
    off_t headSize = 0;        // bytes of the pseudo-tags in front of what is in order

    bool operator==(const FileOrder&) const = default;
};

// Known in this process, and to other processes of the user through a small file each in the cache directory. These
// come and go as a whole and are checked when they are read: whatever happens to them, the worst is that a file has to
// be read to its end once more. Nothing is ever said about it.
//
// Any thread. Its lock is taken last: nothing is called with it held.
class KnownFiles {
public:
    // Smaller files are known to this process only, when somebody tells it: to read them takes no longer.
    static constexpr off_t kWorthKeeping = 64 * 1024;
    static constexpr size_t kMostKept = 100; // in the directory; the oldest go

    // 'directory' need not exist, its parent neither; "" for none.
    explicit KnownFiles(std::string directory);
    KnownFiles(const KnownFiles&) = delete;
    KnownFiles& operator=(const KnownFiles&) = delete;

    // The user's: "declaration" in $XDG_CACHE_HOME, or else in ~/.cache, as these are when it is first asked for.
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
    std::mutex lock; // guards what follows
    std::array<Known, kMostHere> known;
    size_t oldest = 0; // the next to be written over
};

} // namespace tagsfile
