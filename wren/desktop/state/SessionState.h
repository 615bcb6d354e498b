// What was open when the editor was left, and what was opened lately.
#pragma once

#include <string>
#include <vector>

namespace wren {

struct SessionState {
    struct OpenFile {
        std::string path;
        long caret = 0;     // bytes
        long firstLine = 0; // the first to be seen, from 0
        bool worksheet = false;
        bool operator==(const OpenFile&) const = default;
    };
    std::vector<OpenFile> files;
    int current = -1;                     // index in 'files'
    std::vector<std::string> recentFiles; // newest first, at most kMostRecent
    std::string geometry;                 // of the main window, as Qt saves it, in base 64

    static constexpr size_t kMostRecent = 15;
    void Opened(const std::string& path); // puts it first among the recent ones

    bool operator==(const SessionState&) const = default;
};

// StateDirectory()/session.json. A missing or damaged file gives an empty state; nothing is lost by it but the session,
// so nobody is asked. Save makes the directory; false when it could not be written.
SessionState LoadSession();
std::string SessionFile();                     // "" when there is no place for one
std::string FormOf(const SessionState& state); // what the file holds of it
bool SaveSession(const SessionState& state, std::string* error);

} // namespace wren
