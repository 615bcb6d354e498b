// Opening files that somebody else has named.
#pragma once

namespace base {

// A descriptor for reading the plain file that 'path' leads to; -1, with errno, when it cannot be opened: EISDIR for a
// directory, ENXIO for what is neither. The caller closes it. Any thread.
//
// A pipe keeps who opens it waiting, a device may do anything when it is opened or give bytes without end: neither ever
// is. Nor does reading wait for what is not there yet, as some of the system's own files would.
int OpenPlainFile(const char* path);

} // namespace base
