#include "wren/desktop/display/PlaceBesideLine.h"

#include <algorithm>

namespace wren {

namespace {

constexpr int kNear = 20; // pixels: the framework keeps 16 from the baseline

bool IsBeside(const QRect& content, const QRect& line)
{
    return line.isValid() && content.top() <= line.bottom() + kNear && content.bottom() >= line.top() - kNear;
}

} // namespace

QRect PlaceBesideLine(const QRect& content, const QMargins& frame, const QRect& line, const QRect& screen)
{
    QRect place = content.marginsAdded(frame);
    if (!IsBeside(content, line))
        return place;
    // The framework moves a window left that it believes to be too wide.
    if (content.left() < line.left())
        place.moveLeft(std::max(place.left(), std::min(line.left(), screen.right() + 1 - place.width())));
    if (place.top() > line.bottom() || place.bottom() < line.top())
        return place;
    const int below = screen.bottom() - line.bottom();
    const int above = line.top() - screen.top();
    if (place.height() <= below || below >= above)
        place.moveTop(line.bottom() + 1);
    else
        place.moveBottom(line.top() - 1);
    return place;
}

} // namespace wren
