// How far the user may resize a window.
#pragma once

#include "vetch/support/Geometry.h"

#include <QSize>

namespace wren {

// The framework's limits bind the user only, and may contradict each other: the minimum wins. Qt's bind everybody, so
// they must leave room for the size that the framework itself has set, which may lie outside.
struct SizeLimits {
    float minWidth = 0;
    float maxWidth = 32767;
    float minHeight = 0;
    float maxHeight = 32767;

    BRect Bounded(BRect frame) const; // its left upper corner stays
    QSize Least(QSize told) const;
    QSize Most(QSize told) const;
};

} // namespace wren
