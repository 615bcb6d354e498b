// Runs one ctags for many files at once.
#pragma once

#include "tagging/ctags/CtagsProcess.h"
#include "tagging/ctags/CtagsSettings.h"
#include "tagging/ctags/Source.h"

#include <span>
#include <vector>

namespace tagging {

// Without a mark after each file, ctags takes a quarter less time, but nobody can tell which file it is working on. So
// batches are for the many files of a large run, which rarely crash or hang ctags. If one does, all files of the batch
// go to a CtagsProcess.
//
// Whether a source fits into a batch: ctags must write its name unchanged.
bool FitsIntoBatch(const Source& source);

// Tags the sources, all for the same parser, and passes each to 'done' in their order. False, with no calls of 'done',
// when ctags fails, is stopped (one of 'stops' is readable) or takes longer than the limit for one file. Blocks. Any
// thread; ctags dies with it.
bool TagBatch(const CtagsSettings& settings, std::vector<Source>& sources, std::span<const int> stops,
              const CtagsProcess::Done& done);

} // namespace tagging
