#include "wren/desktop/display/Frames.h"

#include <algorithm>

namespace wren {

namespace {

float Within(float value, float least, float most)
{
    return std::max(least, std::min(most, value));
}

int Pixels(float length)
{
    return static_cast<int>(length);
}

} // namespace

BRect SizeLimits::Bounded(BRect frame) const
{
    frame.right = frame.left + Within(frame.Width(), minWidth, maxWidth);
    frame.bottom = frame.top + Within(frame.Height(), minHeight, maxHeight);
    return frame;
}

QSize SizeLimits::Least(QSize told) const
{
    return told.boundedTo({Pixels(minWidth), Pixels(minHeight)});
}

QSize SizeLimits::Most(QSize told) const
{
    return told.expandedTo({Pixels(maxWidth), Pixels(maxHeight)}).expandedTo({Pixels(minWidth), Pixels(minHeight)});
}

} // namespace wren
