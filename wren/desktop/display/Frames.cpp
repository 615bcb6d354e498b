#include "wren/desktop/display/Frames.h"

#include <algorithm>
#include <cmath>

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

QRect RectOf(const BRect& frame)
{
    return {static_cast<int>(std::lround(frame.left)), static_cast<int>(std::lround(frame.top)),
            static_cast<int>(std::lround(frame.Width())), static_cast<int>(std::lround(frame.Height()))};
}

BRect FrameOf(const QRect& rect)
{
    return {static_cast<float>(rect.x()), static_cast<float>(rect.y()), static_cast<float>(rect.x() + rect.width()),
            static_cast<float>(rect.y() + rect.height())};
}

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
