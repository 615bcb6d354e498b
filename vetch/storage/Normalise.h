// The form in which the framework keeps paths.
#pragma once

#include <string>

namespace vetch {

// An absolute path without "//", "." and "..", normalised as text, without a "/" at its end (except the root, "/"). A
// relative path starts at the process's directory. "" for "", and when that directory is unknown. Any thread.
std::string NormalisedPath(const std::string& path);

// The two parts of a normalised path; the root has the directory "" and the leaf "/".
std::string DirectoryPart(const std::string& normalisedPath);
std::string LeafPart(const std::string& normalisedPath);

} // namespace vetch
