#include "Executed.h"

#include "SessionFiles.h"

#include <vector>

namespace {

const std::string kAnnouncement = "executing ";

// A command that begins with a line break has a comment and the command itself in the next two lines; a command that
// ends with one leaves an empty line.
std::string AnnouncementAt(const std::vector<std::string>& lines, size_t start)
{
    const size_t last = start + (lines[start] == kAnnouncement ? 2 : 0);
    std::string text;
    size_t i = start;
    for (; i <= last && i < lines.size(); ++i)
        text += lines[i] + "\n";
    return i < lines.size() && lines[i].empty() ? text + "\n" : text;
}

} // namespace

std::string ExecutedCommands(const std::string& errors)
{
    const std::vector<std::string> lines = Lines(errors);
    std::string ofSystem;
    std::string others;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].starts_with(kAnnouncement))
            continue;
        const std::string announcement = AnnouncementAt(lines, i);
        const bool isOfSystem = announcement.find("SystemHeaderTags") != std::string::npos;
        (isOfSystem ? ofSystem : others) += announcement;
    }
    return ofSystem + others;
}
