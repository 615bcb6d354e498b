// The order of what a name may mean.
#pragma once

#include "resolve/Meaning.h"
#include "resolve/Usage.h"
#include "resolve/World.h"

namespace resolve {

// The best first; the declarations and definitions of one thing follow each other. The order is total, so it is the
// same in each run. 'line' is that of the place, 0 when it does not count.
void RankMeanings(MeaningList& meanings, const Usage& use, unsigned line, World& world);

} // namespace resolve
