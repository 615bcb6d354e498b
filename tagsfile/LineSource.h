// Sources of lines in byte order, and their merger.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace tagsfile {

// Not thread-safe.
class LineSource {
public:
    virtual ~LineSource() = default;

    // The next line, with its line break, in byte order (unsigned, as memcmp). Valid until the next call. False at the
    // end.
    virtual bool Next(std::string_view& line) = 0;
};

// All lines of the sources in order, without duplicates.
std::unique_ptr<LineSource> Merged(std::vector<std::unique_ptr<LineSource>> sources);

} // namespace tagsfile
