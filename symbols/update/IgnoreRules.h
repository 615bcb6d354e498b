// What the ignore files of a tree leave out.
#pragma once

#include "symbols/update/IgnorePattern.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// The patterns of one file, and those of the files that count less. Immutable; any thread.
class IgnoreRules {
public:
    using Pointer = std::shared_ptr<const IgnoreRules>; // null: nothing is ignored

    // Adds the file's patterns to 'outer'; they count more. 'directory' is what they are relative to, absolute, without
    // a trailing "/". Returns 'outer' when there is no such file, or it is a link, or absurdly large.
    static Pointer WithFile(const Pointer& outer, const std::string& file, std::string_view directory);
    static Pointer WithText(const Pointer& outer, std::string_view text, std::string_view directory);

    IgnoreRules(Pointer outer, std::string_view text, std::string_view directory);

    // Whether the last matching pattern ignores it. An ignored directory ignores everything in it: ask for that first.
    // 'path' is absolute, and at or below the directories of all files.
    bool Ignores(std::string_view path, bool isDirectory) const;

private:
    const Pointer outer;
    const size_t prefix; // the length of the directory and of the "/" behind it
    std::vector<IgnorePattern> patterns;
};

} // namespace symbols
