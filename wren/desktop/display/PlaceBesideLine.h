// Where a window of matches stands on the screen.
#pragma once

#include <QMargins>
#include <QRect>

namespace wren {

// The window's frame, with its title bar, so that the line stays visible from which it was asked. That is where the
// framework wants the content, unless it would cover the line; else right below the line, or above it when there is
// more room. 'content' is what the framework wants, 'frame' what the window manager puts around it. A null 'line' is no
// line. All in pixels of the screen.
QRect PlaceBesideLine(const QRect& content, const QMargins& frame, const QRect& line, const QRect& screen);

} // namespace wren
