// Whether the list of files that find gave a tags program was whole.
#pragma once

#include "base/Descriptor.h"

#include <string>

namespace wren {

// A pipe has the status of its last program: a find that is killed looks to the tags program like a short list. So the
// shell is given a function that stands for find, and tells its status on one descriptor and what it complains of on
// another.
//
// Owns both, which are files in memory. One object a command; not thread-safe.
class FindReport {
public:
    FindReport();

    bool IsUsable() const
    {
        return statuses.IsOpen() && complaints.IsOpen();
    } // false when there were no descriptors: errno

    // The command with that function before it. Its descriptors 3 and 4 have to be those below.
    static std::string Watched(const std::string& command);
    int Statuses() const { return statuses.Number(); }
    int Complaints() const { return complaints.Number(); }

    // Once the command has ended.
    std::string Said() const;    // what find complained of, control characters as "?"; of very much, the beginning
    bool Complained() const;     // of any file: then an empty list is not believed
    std::string Problem() const; // why the list may have lacked files that are there; "" when it was whole

private:
    const base::Descriptor statuses;
    const base::Descriptor complaints;
};

// The same for texts: what was told of each find's status, one a line, and what they complained of. A list is whole
// when find succeeded, when all that it complains of is files and directories that it may not read or that are gone,
// and when its reader did not want the rest.
std::string ProblemWithList(const std::string& statuses, const std::string& complaints);

} // namespace wren
