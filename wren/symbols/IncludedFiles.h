// Files that an #include may name.
#pragma once

#include "symbols/Workspace.h"
#include "wren/symbols/TextPlace.h"

#include <string>
#include <vector>

namespace wren {

// Headers, and directories with a "/" behind, below the place's directory: beside the text for quotes, then in the
// include directories of the text's project and of the system. By directory and name, each once, at most 'limit'.
// 'path' is the text's, as in the index. Reads directories.
std::vector<std::string> FilesToInclude(const TextPlace& place, const std::string& typed, symbols::Workspace& workspace,
                                        const std::string& path, size_t limit);

} // namespace wren
