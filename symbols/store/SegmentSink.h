// Writes a segment section by section, to a file or into memory.
#pragma once

#include "base/Result.h"
#include "symbols/store/Format.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// Not thread-safe.
class SegmentSink {
public:
    explicit SegmentSink(int file) : file(file) {} // borrowed, at its beginning; -1: keeps the content

    void Begin(Section section); // in their order; none may be left out
    void Append(std::string_view bytes);
    template <class T>
    void AppendValue(const T& value)
    {
        Append({reinterpret_cast<const char*>(&value), sizeof(value)});
    }

    base::Result<void> Finish(std::uint64_t id, std::uint64_t symbolCount); // fails when the file could not be written
    std::uint64_t Size() const { return written + pending.size(); }
    std::string Content() { return std::move(pending); } // after Finish(), without a file

private:
    void Flush(bool all);

    int file;
    std::uint64_t written = 0;
    std::string pending;
    size_t summed = 0; // bytes of 'pending' whose blocks have a checksum
    std::vector<std::uint64_t> blocks;
    SegmentFooter footer = {};
    base::Result<void> result;
};

} // namespace symbols
