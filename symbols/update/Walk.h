// Finds the sources of a tree.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/update/FoundFile.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

struct WalkOptions {
    std::string root;                // absolute, without a trailing "/"; "" is the root directory
    std::vector<std::string> starts; // directories at or below the root where it begins; absolute
    bool isSystem = false;           // takes everything that can be a header, and knows neither git nor ignore files
    unsigned threads = 2;

    // Which names count; null: those of sources. Several threads call it at once.
    std::function<bool(std::string_view leaf)> takes = nullptr;
    // Gets each file in place of Walked::files, on any thread, several at once, in any order. May be null.
    std::function<void(const FoundFile&)> finds = nullptr;

    // Called before a directory is read, with its absolute path, on any thread, several at once. May be null.
    std::function<void(const std::string&)> enters = nullptr;
    std::function<void(size_t files)> progress = nullptr; // on the calling thread, from time to time; may be null
};

struct Walked {
    std::vector<FoundFile> files;      // in the byte order of their paths; each file once
    std::set<std::string> twins;       // all paths, relative to the root, of files with several paths
    std::vector<std::string> messages; // about what cannot be read
};

// Does not follow links to directories. Of several paths of one file, the first one in byte order that is not a link
// counts; else the first one. Fails when a start cannot be read, or when it is cancelled.
base::Result<Walked> Walk(const WalkOptions& options, const base::CancelToken& cancel);

// The same decision for a single file, from its absolute path: nullopt if it does not count. Says nothing about its
// other paths. "headers" without a suffix need a look.
std::optional<FoundFile> FindOne(const WalkOptions& options, const std::string& path);

} // namespace symbols
