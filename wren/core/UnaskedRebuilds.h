// Which rebuilds of tags that nobody asked for are made.
#pragma once

#include "base/FileIdentity.h"
#include "vetch/support/ShellCommand.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <sys/types.h>

namespace wren {

// A lookup rebuilds stale tags by itself. It must not where the tree is a stranger's, and not again and again where
// that does not help: a source from the future stays newer than any tags. Any thread; a disk that hangs holds up only
// who asks.
class UnaskedRebuilds {
public:
    // 'user' owns what is the user's own; what is root's is nobody's bait.
    explicit UnaskedRebuilds(uid_t user) : user(user) {}

    // Why 'file' is not rebuilt by itself, as the end of a sentence ("since ..."); nothing when it may be.
    std::optional<std::string> WhyNot(const vetch::ShellRequest& request, const std::string& file) const;

    void Ended(const vetch::ShellRequest& request, const std::string& file); // such a run, whatever came of it

private:
    struct Pair {
        std::optional<base::FileIdentity> tags;
        std::string source;
        std::optional<base::FileIdentity> sourceStamp;
        bool operator==(const Pair&) const = default;
    };
    static Pair Look(const vetch::ShellRequest& request, const std::string& file);
    std::optional<std::string> Stranger(const std::string& path) const;

    const uid_t user;
    mutable std::mutex mutex;          // guards what follows; never held while the disk is looked at
    std::map<std::string, Pair> tried; // by tags file, as it was when the last run ended
};

} // namespace wren
