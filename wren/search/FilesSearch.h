// Finds a text in the files of a directory.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "wren/search/TextPattern.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wren {

struct FilesQuery {
    std::string root; // an absolute directory, without a "/" at its end
    TextQuery text;
    // As in .gitignore, relative to the root: only files that match one of them, and none that matches one with "!".
    std::vector<std::string> globs;
    size_t limit = 20'000;                  // matches
    std::optional<std::string> replacement; // of each match; of an expression as for Finder::Expanded()
};

struct FoundLine {         // one match
    long line = 0;         // from 1
    long column = 0;       // bytes, from 1
    std::string source;    // the line without its break; at most the first bytes of a long one
    size_t matchStart = 0; // in 'source', bytes
    size_t matchSize = 0;  // as far as 'source' has it
    size_t offset = 0;     // of the match in the text, bytes
    size_t size = 0;       // of all of the match
    std::string with;      // its replacement, when one is wanted
};

struct FoundInFile {
    std::string path; // relative to the root
    std::vector<FoundLine> lines;
    size_t textSize = 0;        // of the text that they were found in
    std::uint64_t textHash = 0; // base::Fnv1a() of it, when replacements are wanted
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

// The matches in one text, at most query.limit.
std::vector<FoundLine> LinesWith(TextPattern::Finder& finder, std::string_view text, const FilesQuery& query);

} // namespace wren
