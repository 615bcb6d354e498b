// Carries out the changes of an update.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/update/Attempt.h"
#include "symbols/update/Changes.h"
#include "tagging/Settings.h"

#include <functional>
#include <string>

namespace symbols {

struct ParsedFiles {
    size_t parsed = 0;
    size_t failed = 0;  // ctags crashed or took too long; or it cannot be read, and is not in the index
    size_t removed = 0; // were in the index, and cannot be read any more
};

struct ParsingListener {
    std::function<void(size_t done, size_t known)> progress; // on the calling thread; may be null
    std::function<void(const std::string&)> say;             // on any thread, one call at a time; may be null
};

// Puts everything into the writer, which is not committed. Files that are gone by now, or cannot be read, are removed.
// Fails when ctags fails as a whole, or when it is cancelled.
base::Result<ParsedFiles> ParseInto(const Attempt& attempt, const Changes& changes, const std::string& root,
                                    tagging::Settings settings, const ParsingListener& listener,
                                    const base::CancelToken& cancel);

} // namespace symbols
