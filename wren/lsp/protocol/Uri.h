// URIs of files (RFC 8089).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wren::lsp {

// The absolute path that a "file" URI names, "file:///a%20b", "file://localhost/x" or "file:/x", in whatever way it is
// percent-encoded; nullopt for other schemes, other hosts, and paths with a NUL.
std::optional<std::string> PathOfUri(std::string_view uri);

// All bytes but "A-Za-z0-9-._~/" are percent-encoded.
std::string UriOfPath(std::string_view absolute);

} // namespace wren::lsp
