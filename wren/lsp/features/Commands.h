// workspace/executeCommand.
#pragma once

#include "wren/lsp/session/RequestContext.h"

#include <string>

namespace wren::lsp {

constexpr const char* kIndexCommand = "wren.index";   // [] or [URI of a file or a folder]: null when that is current
constexpr const char* kTagsCommand = "wren.tags";     // [] or [URI of a root]: the path of the file, once it is written
constexpr const char* kStatusCommand = "wren.status"; // []: what the indexes hold, and what they do

struct ExecuteCommandParams {
    std::string command;
    std::string path; // that the argument names; "" for none
};

// Throw a Failure.
void from_json(const Json& json, ExecuteCommandParams& params);
Json ExecuteCommand(const ExecuteCommandParams& params, const RequestContext& context);

} // namespace wren::lsp
