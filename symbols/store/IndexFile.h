// A whole index as one file, to carry it to another machine.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/store/Store.h"

#include <string>

namespace symbols {

// 'directory' is that of the index. Any thread; readers and writers of the index are not disturbed.

// Writes the current state. 'file' is replaced in one step, and readable by the user only: it tells as much as the
// sources. It does not contain the root.
base::Result<void> ExportIndex(const std::string& directory, const std::string& file, const base::CancelToken& cancel);

// Makes the content of 'file' the current state, in one step. Fails, and leaves the index as it is, when the file is
// not whole or comes from another version of the format or the parsers ('header' says which are wanted). Waits for
// another process's writer until 'cancel'. The file is trusted: what it says of a source counts until the source
// changes.
base::Result<void> ImportIndex(const std::string& directory, const std::string& file, const StoreHeader& header,
                               const base::CancelToken& cancel);

} // namespace symbols
