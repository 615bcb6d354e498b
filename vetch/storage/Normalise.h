// The one form in which the framework keeps paths.
#pragma once

#include <string>

namespace vetch {

// An absolute path without "//", "." and "..", by text alone, and without a "/" at its end (but for the root, "/"). A
// relative path is taken from the process's directory. "" for "", and when that directory cannot be told. Any thread.
std::string NormalisedPath(const std::string& path);

// Both parts of a normalised path; the root's leaf is "/", in the directory "".
std::string DirectoryPart(const std::string& normalisedPath);
std::string LeafPart(const std::string& normalisedPath);

} // namespace vetch
