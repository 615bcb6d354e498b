// The arithmetic of a list window: how large it is, and where it stands.
#pragma once

#include "vetch/support/Geometry.h"

// All in pixels.
struct ListMeasures {
    float chromeWidth = 0; // what the window has beside and above its list
    float chromeHeight = 0;
    float widestEntry = 0;
    float lineHeight = 0;
    float scrollBarWidth = 0;
    long count = 0; // of entries
    bool resizable = false;
};

// A window's size, and the limits for later resizes by the user.
struct ListFit {
    float width = 0;
    float height = 0;
    float minWidth = 0;
    float maxWidth = 0;
    float minHeight = 0;
    float maxHeight = 0;
};

// As wide as the widest entry and as high as the entries, up to eight of them.
ListFit FitFor(const ListMeasures& list);

// The left upper corner of a window of that size below the caret's point, or above it where there is no room below.
BPoint PlaceBeside(const BPoint& caret, float width, float height, const BRect& screen);
