#include "windows/TagWindow.h"

#include "plugin/PluginInterface.h"
#include "tags/Tags.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BScreen.h"
#include "vetch/interface/BScrollBar.h"
#include "vetch/interface/BScrollView.h"
#include "windows/ListGeometry.h"

#include <algorithm>

namespace {

const BRect kFirstFrame = {100, 100, 400, 200};

// The framework's codes without names.
const uint32 kListFlags = 13;
const uint32 kScrollViewFlags = 1;
const long kScrollViewBorder = 1;

} // namespace

PortSetter::PortSetter(BView* view)
{
    GetPort(&saved);
    SetPort(GetWindowPort(view->Window()->NativeWindow()));
}

PortSetter::~PortSetter()
{
    SetPort(saved);
}

template <class TagSet>
TagWindow<TagSet>::TagWindow(const char* title, bool resizable, uint32 command)
    : BWindow(kFirstFrame, title, resizable ? B_FLOATING_WINDOW_LOOK : B_BORDERED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
              B_AVOID_FOCUS),
      resizable(resizable)
{
    BRect frame = Bounds();
    frame.right -= BScrollBar::MiniScrollBarWidth();
    list = new BListView(frame, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES, kListFlags);
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
    const BRect screen = BScreen::MaxWindowFrameWithHint(where);
    const BPoint place = PlaceBeside(where, Frame().Width(), Frame().Height(), screen);
    list->MakeFocus();
    MoveTo(place.x, place.y);
    Show();
}

template <class TagSet>
void TagWindow<TagSet>::RepositionAt(const PluginInterface* host, long offset)
{
    BPoint where = host->PointAt(offset); // before the lock: do not call the host with it held
    const WindowSection section(*this);
    if (!section)
        return;
    where.x = Frame().left;
    ShowAt(where);
}

template <class TagSet>
void TagWindow<TagSet>::FitList()
{
    const PortSetter port(list); // measures text for the list's window
    const BRect inside = list->Parent()->Bounds();
    ListMeasures measures;
    measures.chromeWidth = Frame().Width() - inside.Width();
    measures.chromeHeight = Frame().Height() - inside.Height();
    measures.widestEntry = WidestEntry();
    measures.lineHeight = LineHeight();
    measures.scrollBarWidth = BScrollBar::MiniScrollBarWidth();
    measures.count = list->CountItems();
    measures.resizable = resizable;
    const ListFit fit = FitFor(measures);
    ResizeTo(fit.width, fit.height);
    SetSizeLimits(fit.minWidth, fit.maxWidth, fit.minHeight, fit.maxHeight);
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
    return height.ascent + height.descent + height.leading + 1; // lists have one pixel between lines
}

template <class TagSet>
void TagWindow<TagSet>::DeleteEntries()
{
    for (long i = list->CountItems() - 1; i >= 0; --i)
        delete list->RemoveItem(i);
}

template class TagWindow<Tags>;
