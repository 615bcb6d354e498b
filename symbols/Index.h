// The index of one tree: found, made, kept current.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/store/Snapshot.h"
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

struct Progress {
    enum class Step { Walking, Parsing, Writing } step = Step::Walking;
    size_t done = 0;
    size_t known = 0; // files; grows while walking
};

struct UpdateResult {
    size_t parsed = 0;  // files
    size_t removed = 0; // files
    size_t failed = 0;  // files without symbols, since ctags crashed, took too long, or could not read them
    bool rebuilt = false;
    bool inMemory = false; // the cache directory cannot be written; 'warning' says why
    std::string warning;   // for the user; "" for none
};

struct IndexOptions {
    std::string root; // absolute
    enum class Content { Project, SystemHeaders } content = Content::Project;
    std::string cache; // the directory of all indexes; "" for the user's
    tagging::Settings tagging;
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

    // Compares the tree with the index and parses what has changed. Concurrent calls follow each other. 'progress' is
    // called on the calling thread; messages about single files go to 'say'.
    struct Listener {
        std::function<void(const Progress&)> progress; // may be null
        std::function<void(const std::string&)> say;   // may be null
    };
    base::Result<UpdateResult> Update(const Listener& listener, const base::CancelToken& cancel);
    // The same for these files only (absolute paths), without a walk.
    base::Result<UpdateResult> UpdateFiles(const std::vector<std::string>& paths, const Listener& listener,
                                           const base::CancelToken& cancel);
    // Keeps it current until 'cancel': watches the tree. 'changed' is called after each update that changed something.
    base::Result<void> Watch(const Listener& listener, const std::function<void(const UpdateResult&)>& changed,
                             const base::CancelToken& cancel);

    base::Result<void> Remove(); // deletes its files

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace symbols
