// Opens files whose names come from elsewhere.
#pragma once

namespace base {

// Opens the plain file that 'path' leads to for reading. Returns -1, with errno, on failure: EISDIR for a directory,
// ENXIO for any other kind of file. The caller closes the descriptor. Any thread.
//
// Never opens a pipe, which would block, or a device, which may have side effects or no end. Reading does not wait for
// data that is not there yet, as some of the system's own files would.
int OpenPlainFile(const char* path);

// Replaces OpenPlainFile(), so that tests can make readers wait. Null, the default, means the file system. Set it while
// nothing is being read.
using PlainFileOpener = int (*)(const char* path);
void SetPlainFileOpener(PlainFileOpener opener);

// The file system's own, for openers that forward other paths.
int OpenPlainFileOnDisk(const char* path);

} // namespace base
