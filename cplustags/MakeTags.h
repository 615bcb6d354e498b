// All that cplustags does, once its command line has been read.
#pragma once

namespace base {
class CancelToken;
}

namespace cplustags {

struct Options;
class Progress;

// The exit status: 0 when the tags file is in place or there was nothing to do, 1 when not; 'progress' has been told
// why. When it is cancelled nothing is told, and all that was begun is undone.
int MakeTags(const Options& options, Progress& progress, const base::CancelToken& cancel);

} // namespace cplustags
