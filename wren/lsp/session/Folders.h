// Which roots the client names.
#pragma once

#include "wren/lsp/protocol/Json.h"

#include <string>
#include <vector>

namespace wren::lsp {

// Of InitializeParams, by preference: workspaceFolders, rootUri, rootPath. Absolute, without links; none for other
// schemes than "file".
std::vector<std::string> NamedFolders(const Json& params);

// Takes over "event" of DidChangeWorkspaceFoldersParams.
void ChangeFolders(const Json& event, std::vector<std::string>& folders);

// Without links; as it is when it does not exist.
std::string RealFolder(const std::string& path);

// The home directory and "/" hold more than a project.
bool IsTooLarge(const std::string& folder);

} // namespace wren::lsp
