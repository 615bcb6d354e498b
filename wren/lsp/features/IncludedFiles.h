// Files that an #include may name.
#pragma once

#include "wren/lsp/features/TextPlace.h"
#include "wren/lsp/session/Subject.h"

#include <string>
#include <vector>

namespace wren::lsp {

// Headers, and directories with a "/" behind, below the place's directory: beside the text for quotes, then in the
// include directories of the text's project and of the system. By directory and name, each once, at most 'limit'.
std::vector<std::string> FilesToInclude(const TextPlace& place, const std::string& typed, const Subject& subject,
                                        size_t limit);

} // namespace wren::lsp
