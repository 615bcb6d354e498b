// Goes to places that answers name, and marks the name there for a moment.
#pragma once

#include "wren/desktop/editor/LandingMark.h"

#include <string>

namespace wren {

class Host;
class MainWindow;
class PlaceActions;
struct FoundPlace;
struct PaletteItem;

// A place whose file cannot be opened leaves the user where they are; the reason has been shown then. GUI thread.
class Landing {
public:
    Landing(Host& host, MainWindow& window, PlaceActions& places); // all borrowed

    void GoTo(const FoundPlace& place);
    // 'line' was typed behind the item's letters, from 1; 0 for the item's own.
    void GoTo(const PaletteItem& item, long line = 0);
    void GoToMatch(const std::string& path, long line); // that the plug-in has found for the name at the caret

private:
    void Mark(long offset, size_t size); // in the current text

    Host& host;
    MainWindow& window;
    PlaceActions& places;
    LandingMark mark;
};

} // namespace wren
