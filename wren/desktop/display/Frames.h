// Frames of the framework in Qt's pixels, and the limits of a window's size.
#pragma once

#include "vetch/support/Geometry.h"

#include <QRect>
#include <QSize>

namespace wren {

QRect RectOf(const BRect& frame);
BRect FrameOf(const QRect& rect);

// The framework's limits bind the user only, and may contradict each other: the minimum wins. Qt's bind everybody, so
// they must leave room for the size that the framework itself has set, which may lie outside.
struct SizeLimits {
    float minWidth = 0;
    float maxWidth = 32767;
    float minHeight = 0;
    float maxHeight = 32767;

    BRect Bounded(BRect frame) const; // keeps its left upper corner
    QSize Least(QSize told) const;
    QSize Most(QSize told) const;
};

} // namespace wren
