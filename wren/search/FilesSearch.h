// Finds a text in the files of a directory.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "wren/search/TextPattern.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace wren {

struct FilesQuery {
    std::string root; // an absolute directory, without a "/" at its end
    TextQuery text;
    // As in .gitignore, relative to the root: only files that match one of them, and none that matches one with "!".
    std::vector<std::string> globs;
    size_t limit = 20'000; // matches
};

struct FoundLine {         // one match
    long line = 0;         // from 1
    long column = 0;       // bytes, from 1
    std::string source;    // the line without its break; at most the first bytes of a long one
    size_t matchStart = 0; // in 'source', bytes
    size_t matchSize = 0;  // as far as 'source' has it
};

struct FoundInFile {
    std::string path; // relative to the root
    std::vector<FoundLine> lines;
};

struct FilesFound {
    size_t files = 0;        // that were searched
    size_t tooLarge = 0;     // files that were left out for their size
    bool more = false;       // than the limit
    bool hasGivenUp = false; // the expression took too long in some file
};

// Files that git or an ignore file leaves out, links, and files that are not text (that have a NUL near their
// beginning) are passed over. 'open' are texts that count instead of their files, by absolute path. 'sink' is called on
// any thread, one call at a time, in any order. Blocks; fails when the root cannot be read, the query is wrong, or it
// is cancelled.
using OpenTexts = std::map<std::string, std::shared_ptr<const std::string>>;
using FoundSink = std::function<void(FoundInFile found)>;
base::Result<FilesFound> SearchFiles(const FilesQuery& query, const OpenTexts& open, const FoundSink& sink,
                                     const base::CancelToken& cancel);

// The matches in one text, at most 'limit'.
std::vector<FoundLine> LinesWith(TextPattern::Finder& finder, std::string_view text, size_t limit);

} // namespace wren
