// What the editor is started with.
#pragma once

#include "wren/desktop/Editor.h"
#include "wren/text/Place.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

struct DesktopArguments {
    DesktopOptions options;
    std::vector<Place> places; // line 0: none was given. The first directory is DesktopOptions::folder instead
    bool waits = false;        // until the texts are closed
    bool isOnItsOwn = false;   // asks no running editor, and later starts do not find it
};

// Absent when the program is to end at once, with '*status': the words were wrong, or asked for help or the version.
std::optional<DesktopArguments> ParseArguments(int count, char** words, int* status);

// A file as a user names it: "FILE", or "FILE:LINE" or "FILE:LINE:COLUMN" if no file has that whole name.
Place PlaceFrom(const std::string& word);

// Files as a user names them. "+LINE" or "+LINE:COLUMN" belongs to the file behind it, or else to the one before it,
// unless a file has that name.
std::vector<Place> PlacesFrom(const std::vector<std::string>& words);

} // namespace wren
