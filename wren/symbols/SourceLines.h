// Lines of sources, for answers that show them.
#pragma once

#include "wren/text/LineIndex.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace wren {

// Keeps the text of the last file, since answers come by file. Not thread-safe.
class SourceLines {
public:
    // Returns the text of a file; nullopt when it cannot be read.
    using Reader = std::function<std::optional<std::string>(const std::string& path)>;

    explicit SourceLines(Reader reader) : read(std::move(reader)) {}

    // Without its line break, and at most kMost bytes of it; "" when there is no such line. Valid until the next call.
    static constexpr size_t kMost = 2000;
    std::string_view Line(const std::string& path, unsigned line); // from 1

private:
    Reader read;
    std::string path;
    std::optional<std::string> text;
    LineIndex index;
};

} // namespace wren
