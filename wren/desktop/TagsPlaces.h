// Where the tags of the current text are, and where new ones go.
#pragma once

#include <set>
#include <string>

namespace vetch {
struct AlertDescription;
}

namespace wren {

class Host;
class NoticeBar;
class StatusLine;

// A tags file serves all texts below it, up to the next one. One that is made in a subdirectory hides the project's, so
// the project's directory is offered first. GUI thread.
class TagsPlaces {
public:
    TagsPlaces(Host& host, NoticeBar& notices, StatusLine& status); // borrowed

    void Show(); // the file that serves the current text, in the status line; a notice when it is not a file

    // The answer that the plug-in gets to its question whether to make tags: "no" where the user is offered another
    // directory for them.
    long Answer(const vetch::AlertDescription& alert, long answer);

private:
    void TellDirectory(const std::string& tags);
    void Offer(const std::string& directory, const std::string& root);
    void Make(const std::string& directory);

    Host& host;
    NoticeBar& notices;
    StatusLine& status;
    std::set<std::string> told; // directories called "tags"
};

} // namespace wren
