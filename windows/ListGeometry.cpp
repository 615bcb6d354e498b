#include "windows/ListGeometry.h"

#include <algorithm>

namespace {

const float kHorizontalMargin = 4.0;   // between the window and the right edge of the screen
const float kAboveCursorOffset = 16.0; // between the caret's point and the window
const long kMaxFitLines = 8;
const long kMinLines = 3;

const float kTextMargin = 10; // around the widest entry
const float kListMargin = 3;  // below the last line
const float kMinResizableWidth = 100;
const float kMinWidth = 50;

} // namespace

ListFit FitFor(const ListMeasures& list)
{
    ListFit fit;
    fit.width = list.chromeWidth + list.widestEntry + kTextMargin;
    if (list.resizable || list.count > kMaxFitLines)
        fit.width += list.scrollBarWidth;
    fit.height =
        list.chromeHeight + list.lineHeight * static_cast<float>(std::min(list.count, kMaxFitLines)) + kListMargin;

    // The height limits cover the list without the chrome that the height above includes. With one or two entries the
    // minimum exceeds the maximum: once resized, the window is at least three lines high. The maximum has room for
    // every entry, so that a user can enlarge a long list.
    fit.minWidth = list.resizable ? kMinResizableWidth : kMinWidth;
    fit.maxWidth = fit.width;
    fit.minHeight = list.lineHeight * kMinLines + kListMargin;
    fit.maxHeight = list.lineHeight * static_cast<float>(list.count) + kListMargin;
    return fit;
}

BPoint PlaceBeside(const BPoint& caret, float width, float height, const BRect& screen)
{
    // Without room below and above, the window stays below and runs off the screen: its first and likeliest lines stay
    // readable.
    BPoint place = {caret.x, caret.y + kAboveCursorOffset};
    const float above = caret.y - height - kAboveCursorOffset;
    if (caret.y + height + kAboveCursorOffset > screen.bottom && above > screen.top)
        place.y = above;

    // Keeps the right edge on the screen only if the left edge then stays on it.
    const float left = screen.right - kHorizontalMargin - width;
    if (caret.x + width + kHorizontalMargin > screen.right && left > screen.left)
        place.x = left;
    return place;
}
