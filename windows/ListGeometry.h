// Computes the size and the place of a list window.
#pragma once

#include "vetch/support/Geometry.h"

// All in pixels.
struct ListMeasures {
    float chromeWidth = 0; // the window's size minus its list's
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

// The upper left corner of a window of that size: below the caret's point, or above it when there is no room below.
BPoint PlaceBeside(const BPoint& caret, float width, float height, const BRect& screen);
