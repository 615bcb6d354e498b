// Lines in the order of their bytes, one after the other, and several such sources as one.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace tagsfile {

// Not thread-safe.
class LineSource {
public:
    virtual ~LineSource() = default;

    // The next line, with its line break, never before the last one in the order of bytes (unsigned, as memcmp). Valid
    // until the next call. False at the end.
    virtual bool Next(std::string_view& line) = 0;
};

// All lines of the sources in order, equal ones once.
std::unique_ptr<LineSource> Merged(std::vector<std::unique_ptr<LineSource>> sources);

} // namespace tagsfile
