// Tells the names in a list from the rest of a name after a line break in it.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace cplustags {

// "find T" prints names unchanged. For a file "etc/passwd.h" in a directory "T/x<line break>" it prints "T/x" and
// "/etc/passwd.h": the second line names a file outside of T, and the first one may be another file. A hostile tree may
// contain such names. So a line that leads to a new place is first tried as the end of a name that began in the lines
// before.
//
// A place is new if no name so far was in it or in a directory above it. New places are rare in a list, so most lines
// cost no disk access. Names are relative to the current directory. Not thread-safe.
class BrokenNames {
public:
    // The name that ends with 'line' or contains it; nullopt when the line is a name or the beginning of one.
    std::optional<std::string> NameWith(const std::string& line);

    // Call it for each line, in order: a name may begin in it.
    void Pass(const std::string& line);
    // The name was listed: lines that lead to its directory prove nothing from now on.
    void Trust(const std::string& name);

private:
    struct Line {
        std::string text;
        bool mayBegin = true; // a name that continues after the last line
    };

    bool IsKnownPlace(const std::string& name);

    std::deque<Line> before;
    size_t bytesBefore = 0;
    std::unordered_set<std::string> places; // with trailing "/"; "" for the current directory
    std::string lastPlace;                  // the place of the last known line
};

} // namespace cplustags
