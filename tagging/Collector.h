// What a worker does with its files, before and after ctags.
#pragma once

#include "tagging/ctags/Source.h"

#include <optional>
#include <string>
#include <string_view>

namespace tagging {

// One for each worker, used on its thread. Files are known by their numbers.
class Collector {
public:
    virtual ~Collector() = default;

    // Nullopt, with '*error', when the file cannot be read.
    virtual std::optional<Source> Make(unsigned number, const std::string& path, std::string* error) = 0;

    // Each file ends with one of these two. 'output' is that of ctags for it; the source may be modified.
    virtual void Keep(Source& source, std::string_view output) = 0;
    virtual void LeaveOut(unsigned number) = 0; // it cannot be read, or has crashed ctags or kept it too long

    virtual void Finish() = 0; // after the last file, unless the run has ended early
};

} // namespace tagging
