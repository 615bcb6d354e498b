// Opening files that somebody else has named.
#pragma once

namespace base {

// A descriptor for reading the plain file that 'path' leads to; -1, with errno, when it cannot be opened: EISDIR for a
// directory, ENXIO for what is neither. The caller closes it. Any thread.
//
// A pipe keeps who opens it waiting, a device may do anything when it is opened or give bytes without end: neither ever
// is. Nor does reading wait for what is not there yet, as some of the system's own files would.
int OpenPlainFile(const char* path);

// Opens files in OpenPlainFile()'s place: tests have readers wait in it. Null for the file system, as at first. Set it
// while nothing is read.
using PlainFileOpener = int (*)(const char* path);
void SetPlainFileOpener(PlainFileOpener opener);

// The file system's own, for an opener that hands on what does not concern it.
int OpenPlainFileOnDisk(const char* path);

} // namespace base
