// What a user may set, in "initializationOptions", the section "wren" of the configuration, or the command line.
#pragma once

#include "wren/lsp/protocol/Json.h"

#include <string>
#include <vector>

namespace wren::lsp {

struct Settings {
    std::vector<std::string> tags; // files; relative to the root
    bool index = true;
    bool systemHeaders = true;
    size_t completionLimit = 100;
    bool snippets = true;
    bool commentsInReferences = false;

    bool operator==(const Settings&) const = default;
};

// Takes over what 'given' sets. Returns a sentence for each name that is not known and each value that cannot be used:
// those leave 'settings' as they are.
std::vector<std::string> Apply(const Json& given, Settings& settings);

} // namespace wren::lsp
