// Texts of files, for what an index does not hold.
#pragma once

#include <optional>
#include <string>

namespace resolve {

// Reads files of the project when it needs their text. Any thread.
class Sources {
public:
    virtual ~Sources() = default;
    // Nullopt when it cannot be read. 'path' as in symbols::File.
    virtual std::optional<std::string> Read(const std::string& path) const = 0;
};

} // namespace resolve
