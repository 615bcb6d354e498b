#include "windows/ListGeometry.h"

#include <algorithm>

namespace {

const float kHorizontalMargin = 4.0;   // between the window and the right edge of the screen
const float kAboveCursorOffset = 16.0; // between the caret's point and the window
const long kMaxFitLines = 8;
const long kMinLines = 3;

const float kTextMargin = 10; // beside the widest entry
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

    // The height limits count the list alone, without the chrome that the height above has. With one or two entries the
    // minimum exceeds the maximum: the window can then not be made lower than three lines once its user resizes it. The
    // maximum has room for every entry, so that a long list can be pulled open.
    fit.minWidth = list.resizable ? kMinResizableWidth : kMinWidth;
    fit.maxWidth = fit.width;
    fit.minHeight = list.lineHeight * kMinLines + kListMargin;
    fit.maxHeight = list.lineHeight * static_cast<float>(list.count) + kListMargin;
    return fit;
}

BPoint PlaceBeside(const BPoint& caret, float width, float height, const BRect& screen)
{
    // Where there is room neither below nor above, the window stays below and runs off the screen: its first lines, the
    // likeliest ones, can then be read.
    BPoint place = {caret.x, caret.y + kAboveCursorOffset};
    const float above = caret.y - height - kAboveCursorOffset;
    if (caret.y + height + kAboveCursorOffset > screen.bottom && above > screen.top)
        place.y = above;

    // Only the right edge is kept on the screen, and only where that leaves the left one on it.
    const float left = screen.right - kHorizontalMargin - width;
    if (caret.x + width + kHorizontalMargin > screen.right && left > screen.left)
        place.x = left;
    return place;
}
