// Reads files that describe a tree, such as a .gitignore.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace symbols {

enum class Links { Refuse, Follow };

inline constexpr size_t kMostOfSmallFile = size_t(1) << 20; // bytes

// Nullopt when it cannot be read, is not a plain file or is larger than 'most' bytes. Never waits for a pipe.
std::optional<std::string> ReadSmallFile(const std::string& path, Links links, size_t most = kMostOfSmallFile);

} // namespace symbols
