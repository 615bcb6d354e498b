// The files that were open when the editor ended, and those that were opened lately.
#pragma once

#include "wren/desktop/state/KeptBookmarks.h"
#include "wren/text/TextEncoding.h"

#include <string>
#include <vector>

namespace wren {

struct SessionState {
    struct OpenFile {
        std::string path;
        long caret = 0;     // bytes
        long firstLine = 0; // the first to be seen, from 0
        bool worksheet = false;
        std::vector<long> bookmarks = {}; // lines, from 0; at most kMostBookmarks
        TextEncoding encoding = {};
        bool operator==(const OpenFile&) const = default;
    };
    std::vector<OpenFile> files;
    int current = -1;                     // index in 'files'
    std::vector<std::string> recentFiles; // newest first, at most kMostRecent
    std::string geometry;                 // of the main window, as Qt saves it, in base 64
    std::string layout;                   // of its panels, the same
    std::vector<std::string> panels;      // that were open, by the names of their widgets

    struct MarkedFile {
        std::string path;
        std::vector<KeptBookmark> bookmarks; // at most kMostBookmarks, in the order of their lines
        bool operator==(const MarkedFile&) const = default;
    };
    std::vector<MarkedFile> marked; // open or closed, the last one to change first; at most kMostMarked

    static constexpr size_t kMostRecent = 15;
    static constexpr size_t kMostMarked = 100;
    static constexpr size_t kMostBookmarks = 1000;
    void Opened(const std::string& path); // puts it first among the recent ones
    // Whether the file had others, or none.
    bool SetBookmarks(const std::string& path, const std::vector<KeptBookmark>& bookmarks);
    std::vector<KeptBookmark> BookmarksOf(const std::string& path) const;

    bool operator==(const SessionState&) const = default;
};

// The file is StateDirectory()/session.json; a folder that was opened as such, an absolute path, has one of its own. A
// missing or damaged file gives an empty state: only the session is lost, so the user is not asked. SaveSession() makes
// the directory; false when the file could not be written.
SessionState LoadSession(const std::string& folder = "");
std::string SessionFile(const std::string& folder = ""); // "" without a state directory
std::string FormOf(const SessionState& state);           // the content of the file
bool SaveSession(const SessionState& state, std::string* error, const std::string& folder = "");

} // namespace wren
