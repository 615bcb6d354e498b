// Points and rectangles, in pixels. A rectangle's width is right - left; its edges belong to it.
#pragma once

#include "vetch/support/Types.h"

struct BPoint {
    float x = 0;
    float y = 0;

    bool operator==(const BPoint&) const = default;
};

struct BRect {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;

    float Width() const { return right - left; }
    float Height() const { return bottom - top; }
    bool Contains(BPoint point) const
    {
        return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
    }
    bool operator==(const BRect&) const = default;
};

struct rgb_color {
    uint8 red = 0;
    uint8 green = 0;
    uint8 blue = 0;
    uint8 alpha = 255;

    bool operator==(const rgb_color&) const = default;
};

enum color_space { B_RGB32 = 8 };
