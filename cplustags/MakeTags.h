// Makes tags files, once the command line has been read.
#pragma once

namespace base {
class CancelToken;
}

namespace cplustags {

struct Options;
class Progress;

// Returns the exit status: 0 when the tags file is in place or there was nothing to do; 1 on failure, with the reason
// reported to 'progress'. When cancelled, it reports nothing and undoes everything that was begun.
int MakeTags(const Options& options, Progress& progress, const base::CancelToken& cancel);

} // namespace cplustags
