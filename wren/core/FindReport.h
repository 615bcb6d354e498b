// Whether find gave a tags program a complete list of files.
#pragma once

#include "base/Descriptor.h"

#include <string>

namespace wren {

// A pipe has the status of its last program: to the tags program, a killed find looks like a short list. So a shell
// function stands in for find. It writes find's status to one descriptor and its error messages to another.
//
// Owns both descriptors, which are files in memory. One object per command; not thread-safe.
class FindReport {
public:
    FindReport();

    bool IsUsable() const
    {
        return statuses.IsOpen() && complaints.IsOpen();
    } // false, with errno, when there were no descriptors

    // The command with that function in front. Its descriptors 3 and 4 have to be Statuses() and Complaints().
    static std::string Watched(const std::string& command);
    int Statuses() const { return statuses.Number(); }
    int Complaints() const { return complaints.Number(); }

    // Call these once the command has ended.
    std::string Said() const;    // find's messages, control characters as "?", truncated when long
    bool Complained() const;     // about any file: an empty list is not trusted then
    std::string Problem() const; // why the list may lack existing files; "" when it is complete

private:
    const base::Descriptor statuses;
    const base::Descriptor complaints;
};

// Problem() for texts: the find statuses, one a line, and find's messages. A list is complete when find succeeded, when
// all its messages are about unreadable or vanished files and directories, or when its reader stopped reading.
std::string ProblemWithList(const std::string& statuses, const std::string& complaints);

} // namespace wren
