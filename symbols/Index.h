// The index of one tree: found, made, kept current.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/UpdateResult.h"
#include "symbols/store/Snapshot.h"
#include "symbols/store/Store.h"
#include "tagging/Settings.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace symbols {

// The root of a file's or a directory's project: the nearest directory at or above it with "tags", ".git", ".hg",
// ".jj", "compile_commands.json" or ".wren"; nullopt if there is none below the home directory and "/".
std::optional<std::string> FindRoot(const std::string& path);

// How sources are parsed: by the Universal Ctags that $CPLUSTAGS_CTAGS names, or that of this machine, in
// $CPLUSTAGS_JOBS processes or one per core, $CPLUSTAGS_TIME_LIMIT seconds for a file. No macros are ignored, as for
// the tags file of a project. Fails when there is no ctags, with a remedy, or a variable is wrong.
base::Result<tagging::Settings> IndexSettings();

struct IndexOptions {
    std::string root; // absolute; for the system's headers "/"
    enum class Content { Project, SystemHeaders } content = Content::Project;
    std::string cache;                    // the directory of all indexes; "" for the user's
    tagging::Settings tagging;            // IndexSettings(), for example; directories are filled in
    std::vector<std::string> directories; // of the system's headers, absolute; empty for those of the machine
};

// Any thread.
class Index {
public:
    explicit Index(IndexOptions options); // reads nothing yet
    ~Index();

    const std::string& Root() const;
    std::string Directory() const; // of its files

    // The last complete state; null before the first update of a new index. Does not wait.
    SnapshotPointer Current() const;

    // Compares the tree with the index and parses what has changed. Concurrent calls follow each other. The new state
    // appears in one step; a cancelled update leaves the old one, and fails. Fails also when the root cannot be read or
    // ctags cannot be run. The program must ignore SIGPIPE.
    struct Listener {
        std::function<void(const Progress&)> progress; // on the calling thread; may be null
        // About single files. On any thread, one call at a time. May be null.
        std::function<void(const std::string&)> say;
        // Asked when a first update is cancelled: whether the next one goes on from there, also in another process.
        // Writing what was parsed takes a second or two in a large tree. Null: it starts from nothing.
        std::function<bool()> keepsPart = nullptr;
    };
    base::Result<UpdateResult> Update(const Listener& listener, const base::CancelToken& cancel);
    // The same for these files only (absolute paths), without a walk unless they decide about other files: directories,
    // ignore files, and files with several paths.
    base::Result<UpdateResult> UpdateFiles(const std::vector<std::string>& paths, const Listener& listener,
                                           const base::CancelToken& cancel);
    // Updates it and keeps it current until 'cancel': watches the tree, or walks it again and again where the system
    // has no more watches. 'changed' is called after each update that changed something. Fails when the first update
    // does; 'say' reports failures of later ones, and they are retried.
    base::Result<void> Watch(const Listener& listener, const std::function<void(const UpdateResult&)>& changed,
                             const base::CancelToken& cancel);

    // The process that writes its files now, this one or another. For people: it may have ended meanwhile.
    std::optional<WritingProcess> Writing() const;

    base::Result<void> Remove(); // deletes its files

    // The whole index as one file, for the same tree elsewhere: another machine, another directory. Update() after an
    // import compares the content of all files and parses those that differ. An import fails, and changes nothing, when
    // the file is damaged or made by other versions of the parsers. See symbols/store/IndexFile.h.
    base::Result<void> Export(const std::string& file, const base::CancelToken& cancel) const;
    base::Result<void> Import(const std::string& file, const base::CancelToken& cancel);

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace symbols
