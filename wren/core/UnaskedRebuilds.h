// Decides which automatic rebuilds of tags run.
#pragma once

#include "base/FileIdentity.h"
#include "vetch/support/ShellCommand.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <sys/types.h>

namespace wren {

// A lookup rebuilds stale tags automatically. It must not do so in a stranger's tree, nor repeat a rebuild that does
// not help: a source from the future stays newer than any tags. Any thread; a hanging disk blocks only the caller.
class UnaskedRebuilds {
public:
    // 'user' is the user's identifier; files of the user and of root are trusted.
    explicit UnaskedRebuilds(uid_t user) : user(user) {}

    // Why 'file' is not rebuilt automatically, as the end of a sentence ("since ..."); nullopt when it may be.
    std::optional<std::string> WhyNot(const vetch::ShellRequest& request, const std::string& file) const;

    void Ended(const vetch::ShellRequest& request, const std::string& file); // an automatic run ended, with any result

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
    mutable std::mutex mutex;          // guards the members below; never held during disk access
    std::map<std::string, Pair> tried; // by tags file; state at the end of the last run
};

} // namespace wren
