// Watches the directories of a tree for changes of its sources.
#pragma once

#include "base/Descriptor.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace symbols {

// Directories are watched from the moment at which a walk enters them, before it reads them: no change is missed
// between the two.
class TreeWatch {
public:
    struct Options {
        std::set<std::string> starts; // of the walks; absolute
        bool isSystem = false;        // files without a suffix count as well
        unsigned most = ~0u;          // watches; the system may allow fewer
    };

    // Without inotify it watches nothing, and IsComplete() is false.
    explicit TreeWatch(Options options);

    // A walk: call Enter() for each directory (any thread, several at once), EndWalk() at its end. Directories that the
    // walk has not entered are no longer watched.
    void BeginWalk();
    void Enter(const std::string& directory) { Watch(directory, Kind::Sources); }
    void EndWalk();

    // During a walk as well. "HEAD" and "index" in a directory of git decide which files count. Without the manifest in
    // its directory, the index has to be rebuilt.
    void EnterGitDirectory(const std::string& directory) { Watch(directory, Kind::Git); }
    void EnterIndexDirectory(const std::string& directory) { Watch(directory, Kind::Index); }

    // False while directories are not watched, since the system has no more watches: changes there are not seen.
    bool IsComplete() const;

    struct Events {
        std::set<std::string> files; // sources that may have changed; absolute
        bool needsWalk = false;      // directories or ignore files have changed, or events were lost
        bool IsEmpty() const { return files.empty() && !needsWalk; }
        void Add(Events&& more);
    };
    int Descriptor() const { return notify.Number(); } // for poll()
    Events Read();                                     // does not wait

private:
    enum class Kind : std::uint8_t { Sources, Git, Index };
    struct Watched {
        std::string path;
        Kind kind = Kind::Sources;
        unsigned walk = 0; // the last one that has entered it
    };

    void Watch(const std::string& directory, Kind kind);
    void Take(int number, std::uint32_t what, std::string_view name, Events& events);

    const Options options;
    base::Descriptor notify;
    mutable std::mutex mutex; // for the rest
    std::unordered_map<int, Watched> watched;
    unsigned walk = 0;
    bool isComplete = true;
};

} // namespace symbols
