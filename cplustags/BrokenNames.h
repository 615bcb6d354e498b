// Tells the names of a list from what stands behind a line break in one of them.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace cplustags {

// "find T" prints names as they are. Of a file "etc/passwd.h" in a directory "T/x<line break>" it prints "T/x" and
// "/etc/passwd.h": the second line names a file that is not in T at all, and the first one may be a file of its own. A
// tree from elsewhere may bring such names, so a line that leads to a place where no name has been yet is first tried
// as the end of one that began in the lines before.
//
// What is not in a directory of a name before, or below, is such a place. There are few of them in a list, so most
// lines cost no look at the disk. Names are relative to the current directory. Not thread-safe.
class BrokenNames {
public:
    // The name of which 'line' is the end, or a part; nothing when it is one of its own, or the beginning of one.
    std::optional<std::string> NameWith(const std::string& line);

    void Pass(const std::string& line);  // names may have begun in it; for each line, in order
    void Trust(const std::string& name); // it was listed: that lines lead to its directory proves nothing any more

private:
    struct Line {
        std::string text;
        bool mayBegin = true; // a name that goes on behind the last line
    };

    bool IsKnownPlace(const std::string& name);

    std::deque<Line> before;
    size_t bytesBefore = 0;
    std::unordered_set<std::string> places; // with "/" at their ends, "" for the current directory
    std::string lastPlace;                  // that a line was in
};

} // namespace cplustags
