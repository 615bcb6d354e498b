#include "windows/TagWindow.h"

#include "plugin/PluginInterface.h"
#include "tags/Tags.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BScreen.h"
#include "vetch/interface/BScrollBar.h"
#include "vetch/interface/BScrollView.h"
#include "windows/PortSetter.h"

#include <algorithm>

namespace {

const float kHorizontalMargin = 4.0;   // between the window and the right edge of the screen
const float kAboveCursorOffset = 16.0; // between the caret's point and the window
const long kMaxFitLines = 8;

const BRect kFirstFrame = {100, 100, 400, 200};
const float kTextMargin = 10; // beside the widest entry
const float kListMargin = 3;  // below the last line
const float kMinResizableWidth = 100;
const float kMinWidth = 50;
const float kMinLines = 3;

// Codes of the framework without names of their own.
const long kSingleSelectionList = 0;
const uint32 kListFlags = 13;
const uint32 kScrollViewFlags = 1;
const long kScrollViewBorder = 1;

} // namespace

template <class TagSet>
TagWindow<TagSet>::TagWindow(const char* title, bool resizable, uint32 command)
    : BWindow(kFirstFrame, title, resizable ? B_FLOATING_WINDOW_LOOK : B_BORDERED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
              B_AVOID_FOCUS),
      resizable(resizable)
{
    BRect frame = Bounds();
    frame.right -= BScrollBar::MiniScrollBarWidth();
    list = new BListView(frame, "list", kSingleSelectionList, B_FOLLOW_ALL_SIDES, kListFlags);
    auto* scroller = new BScrollView("scroll_view", list, B_FOLLOW_ALL_SIDES, kScrollViewFlags, false, true,
                                     kScrollViewBorder, true);
    scroller->SetResizeCorner(resizable);
    scroller->SetAutoHideScrollBars(!resizable);
    AddChild(scroller);

    BFont font = *be_plain_font;
    font.SetDrawAntiAliased(true);
    list->SetFont(&font);
    list->SetInvocationMessage(new BMessage(command));
    list->SetTarget(this);
    list->MakeFocus();
}

template <class TagSet>
TagWindow<TagSet>::~TagWindow()
{
    DeleteEntries();
}

template <class TagSet>
void TagWindow<TagSet>::ShowAt(const PluginInterface* host, long offset)
{
    ShowAt(host->PointAt(offset));
}

template <class TagSet>
void TagWindow<TagSet>::ShowAt(const BPoint& where)
{
    const WindowSection section(*this);
    if (!section)
        return;
    const BPoint place = PlaceFor(where);
    list->MakeFocus();
    MoveTo(place.x, place.y);
    Show();
}

template <class TagSet>
void TagWindow<TagSet>::RepositionAt(const PluginInterface* host, long offset)
{
    BPoint where = host->PointAt(offset); // the host is asked before the lock is taken
    const WindowSection section(*this);
    if (!section)
        return;
    where.x = Frame().left;
    ShowAt(where);
}

template <class TagSet>
BPoint TagWindow<TagSet>::PlaceFor(const BPoint& where) const
{
    const BRect screen = BScreen::MaxWindowFrameWithHint(where);
    const float width = Frame().Width();
    const float height = Frame().Height();

    // Where there is room neither below nor above, the window stays below and runs off the screen: its first lines, the
    // likeliest ones, can then be read.
    BPoint place = {where.x, where.y + kAboveCursorOffset};
    const float above = where.y - height - kAboveCursorOffset;
    if (where.y + height + kAboveCursorOffset > screen.bottom && above > screen.top)
        place.y = above;

    // Only the right edge is kept on the screen, and only where that leaves the left one on it.
    const float left = screen.right - kHorizontalMargin - width;
    if (where.x + width + kHorizontalMargin > screen.right && left > screen.left)
        place.x = left;
    return place;
}

template <class TagSet>
void TagWindow<TagSet>::FitList()
{
    const PortSetter port(list);
    const BRect inside = list->Parent()->Bounds();
    const float chromeWidth = Frame().Width() - inside.Width();
    const float chromeHeight = Frame().Height() - inside.Height();
    const long count = list->CountItems();

    float width = chromeWidth + WidestEntry() + kTextMargin;
    if (resizable || count > kMaxFitLines)
        width += BScrollBar::MiniScrollBarWidth();
    const float line = LineHeight();
    ResizeTo(width, chromeHeight + line * std::min(count, kMaxFitLines) + kListMargin);

    // The limits count the list alone, without the chrome that the size above has. With one or two entries the minimum
    // exceeds the maximum; the window then cannot be made smaller than three lines once its user resizes it. The maximum
    // has room for every entry, so that a long list can be pulled open.
    SetSizeLimits(resizable ? kMinResizableWidth : kMinWidth, width, line * kMinLines + kListMargin,
                  line * count + kListMargin);
}

template <class TagSet>
float TagWindow<TagSet>::WidestEntry() const
{
    float widest = 0;
    for (long i = 0; i < list->CountItems(); ++i) {
        const auto* entry = static_cast<const BStringItem*>(list->ItemAt(i));
        widest = std::max(widest, list->StringWidth(entry->Text()));
    }
    return widest;
}

template <class TagSet>
float TagWindow<TagSet>::LineHeight() const
{
    BFont font;
    list->GetFont(&font);
    font_height height;
    font.GetHeight(&height);
    return height.ascent + height.descent + height.leading + 1;
}

template <class TagSet>
void TagWindow<TagSet>::DeleteEntries()
{
    for (long i = list->CountItems() - 1; i >= 0; --i)
        delete list->RemoveItem(i);
}

template class TagWindow<Tags>;
