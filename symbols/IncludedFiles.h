// Files that texts include, for as long as no index has them.
#pragma once

#include "base/CancelToken.h"
#include "symbols/store/Snapshot.h"
#include "symbols/store/Store.h"
#include "tagging/SourceParser.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace symbols {

// There are no include paths, so an include is looked for beside the file, in each directory above it up to the root,
// in an "include" directory there, and where the system's headers are. Any thread.
class IncludedFiles {
public:
    // 'root' is the project's, "" for none. Without 'withSystem' the system's headers are left out. The settings are
    // those of the parser: it is another one than that of questions, which need not wait for this work then.
    IncludedFiles(std::string root, bool withSystem, const tagging::Settings& settings);

    // What a file or text includes that others hold, so that it is not read; nullopt for any other file.
    using KnownIncludes = std::function<std::optional<std::vector<std::string>>(const std::string& path)>;

    // Reads what the text includes, nearest first, and again what has changed on the disk. Ends after a second, two
    // hundred files or 20 MB; the next load reads on from there. The first ones can be seen meanwhile. 'path' is
    // absolute. Returns whether anything is new. Blocks.
    bool Load(const std::string& path, const KnownIncludes& known, const base::CancelToken& cancel);

    // Null before anything was read. Paths as in File::path; those of the system are absolute.
    SnapshotPointer Files() const;
    SnapshotPointer FilesOfSystem() const;

private:
    class Walk;
    struct Held {
        tagging::FileStamp stamp;
        std::vector<std::string> includes;
    };

    std::string PathInIndex(const std::string& path) const;
    bool IsSystem(std::string_view path) const;
    Store::Writer& WriterFor(const std::string& path);
    void Forget();
    void Publish();

    const std::string root;
    const bool withSystem;
    tagging::TextParser parser;

    std::mutex loading;                         // guards the next ones
    std::vector<std::string> systemDirectories; // to search; found by the first load
    std::unordered_map<std::string, Held> held;
    std::unique_ptr<Store::Writer> writer;
    std::unique_ptr<Store::Writer> systemWriter;

    mutable std::mutex mutex; // guards the next ones
    SnapshotPointer files;
    SnapshotPointer filesOfSystem;
};

} // namespace symbols
