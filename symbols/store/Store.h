// The files of one index on the disk: one writer at a time, any number of readers.
#pragma once

#include "base/Result.h"
#include "symbols/store/Snapshot.h"
#include "tagging/SourceParser.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace symbols {

class Segment;

// A text that takes precedence over its file. Immutable; any thread. Making one costs about as much as parsing it, and
// combining it with others costs nothing, so keep it until its text changes.
class OpenText {
public:
    OpenText(std::string path, std::string text, const tagging::ParsedSource& parsed); // 'path' as in File::path

    const std::string& Path() const { return path; }
    const std::string& Text() const { return text; }
    const std::shared_ptr<const Segment>& Symbols() const { return symbols; }

private:
    std::string path;
    std::string text;
    std::shared_ptr<const Segment> symbols;
};

struct StoreHeader {      // what the index says about itself
    std::string root;     // the directory that it describes
    std::string patterns; // which sources were wanted, and the versions of the parsers: another value means rebuild

    bool operator==(const StoreHeader&) const = default;
};

struct WritingProcess {
    int number = 0;                              // 0 when it is unknown
    std::chrono::system_clock::time_point since; // when it began
};

struct StoreLimits {                    // tests have smaller ones
    size_t memory = size_t(512) << 20;  // bytes that a writer uses, about, before it writes a segment
    size_t segments = 8;                // of about the same size; more are merged
    std::uint64_t merged = 32ull << 20; // bytes; larger segments are left alone unless half of their files are gone
};

// A directory with one index. Any thread.
class Store {
public:
    // Does not create anything; a missing, foreign or older index is an empty one. 'directory' is absolute.
    explicit Store(std::string directory, StoreLimits limits = {});
    ~Store();

    // The last complete state. Reads it from the disk when another process has written since. Never waits for a
    // writer. Null when there is no usable index.
    SnapshotPointer Current() const;
    std::optional<StoreHeader> Header() const; // of the current state
    // What CommitPart() has written, if a writer from nothing continues it. For one that has the writer.
    SnapshotPointer Part(const StoreHeader& header) const;

    // FileChanges to an index. They appear in one step, at Commit(); a writer that is destroyed before leaves no trace.
    class Writer {
    public:
        virtual ~Writer() = default;

        // Any thread. 'path' as in File::path. Replaces what the index had for it.
        virtual void Put(std::string_view path, const tagging::FileStamp& stamp,
                         const tagging::ParsedSource& source) = 0;
        virtual void Touch(std::string_view path, const tagging::FileStamp& stamp) = 0; // same content, other stamp
        virtual void Remove(std::string_view path) = 0;

        // Writes the files. On an error, such as a full disk, the index is as before. Cancelling does not stop it. The
        // writer can be used for further changes afterwards.
        virtual base::Result<void> Commit() = 0;
        // Keeps what was put for the next writer with the same header, which goes on from there. Nobody else sees it.
        // Does nothing when there is a complete state, or no directory.
        virtual base::Result<void> CommitPart() = 0;
    };

    // Waits for another process's writer until 'cancel'. Fails when the directory cannot be written. With
    // 'fromNothing', the new state holds only what is put, and what Part() says.
    base::Result<std::unique_ptr<Writer>> Write(const StoreHeader& header, bool fromNothing,
                                                const base::CancelToken& cancel);

    // The process that has a writer now, this one or another. For people: it may have ended meanwhile.
    std::optional<WritingProcess> Writing() const;

    // Deletes the index; readers keep what they have. Fails while there is a writer.
    base::Result<void> Remove();

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

// An index in memory, for a directory that cannot be written. The same rules, without files. 'before' is a snapshot of
// a store or of an earlier such writer, not a combined one; null for nothing. 'committed' is called in Commit().
std::unique_ptr<Store::Writer> WriteInMemory(const SnapshotPointer& before,
                                             std::function<void(SnapshotPointer)> committed, StoreLimits limits = {});

// One view of several indexes, for example a project and the system's headers. Files of 'system' say so and have
// absolute paths ('systemRoot' is put in front). Open texts replace the files that they name, or are new files. Null
// snapshots count as empty. Cheap enough for every key stroke.
SnapshotPointer Combined(SnapshotPointer project, SnapshotPointer system, const std::string& systemRoot,
                         const std::vector<std::shared_ptr<const OpenText>>& open);

} // namespace symbols
