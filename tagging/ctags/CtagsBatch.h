// One ctags that is given many files at once.
#pragma once

#include "tagging/ctags/CtagsProcess.h"
#include "tagging/ctags/CtagsSettings.h"
#include "tagging/ctags/Source.h"

#include <span>
#include <vector>

namespace tagging {

// Without a mark behind each file ctags needs a quarter less time, and cannot be told from outside what it is at. So
// this is for the many files of a large run, none of which is expected to crash or hang ctags; when one does, all of
// them are to be given to a CtagsProcess.
//
// Whether a source can be in a batch: ctags writes its name as it was given.
bool FitsIntoBatch(const Source& source);

// Has the sources tagged, which one parser is for, and hands each to 'done', in their order. False, with nothing handed
// out, when ctags fails, is stopped ('stops' are descriptors that are readable then), or takes longer than it may take
// for one file. Waits; any thread, with which ctags dies.
bool TagBatch(const CtagsSettings& settings, std::vector<Source>& sources, std::span<const int> stops,
              const CtagsProcess::Done& done);

} // namespace tagging
