#include "vetch/interface/BListView.h"

#include "vetch/app/Modifiers.h"
#include "vetch/display/Display.h"
#include "vetch/interface/BWindow.h"

BListView::BListView(BRect frame, const char* name, long /*type*/, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags)
{
}

BListView::~BListView() = default;

bool BListView::AddItem(BListItem* item)
{
    if (item == nullptr)
        return false;
    items.push_back(item);
    if (Window() != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::ListItemAdded{Token(), CountItems() - 1, TextOf(CountItems() - 1)});
    return true;
}

BListItem* BListView::RemoveItem(long index)
{
    BListItem* item = ItemAt(index);
    if (item == nullptr)
        return nullptr;
    items.erase(items.begin() + index);
    if (Window() != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::ListItemRemoved{Token(), index});
    if (index == selection)
        SetSelection(-1);
    else if (index < selection)
        SetSelection(selection - 1);
    return item;
}

BListItem* BListView::ItemAt(long index) const
{
    return index < 0 || index >= CountItems() ? nullptr : items[index];
}

long BListView::CountItems() const
{
    return static_cast<long>(items.size());
}

void BListView::InvalidateItem(long index)
{
    if (Window() != nullptr && ItemAt(index) != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::ListItemChanged{Token(), index, TextOf(index)});
}

void BListView::Select(long index, bool /*extend*/)
{
    SetSelection(ItemAt(index) == nullptr ? -1 : index);
}

long BListView::CurrentSelection() const
{
    return selection;
}

void BListView::SetInvocationMessage(BMessage* message)
{
    SetMessage(message);
}

status_t BListView::Invoke(const BMessage* message)
{
    const BMessage* sent = message == nullptr ? Message() : message;
    if (sent == nullptr)
        return B_ERROR;
    BMessage copy(*sent);
    if (selection >= 0)
        copy.AddInt32("index", static_cast<int32>(selection));
    return BInvoker::Invoke(&copy);
}

void BListView::SetSelectionColor(rgb_color colour)
{
    selectionColour = colour;
    if (Window() != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::ListColoured{Token(), colour});
}

void BListView::MessageReceived(BMessage* message)
{
    if (message->what == B_KEY_DOWN)
        KeyDown(*message);
    else if (message->what == B_MOUSE_DOWN)
        MouseDown(*message);
    else
        BView::MessageReceived(message);
}

void BListView::AttachedToWindow()
{
    if (!HasTarget())
        SetTarget(Window());
    vetch::ViewDescription description = Description();
    description.kind = vetch::ViewDescription::Kind::List;
    vetch::Display* display = vetch::CurrentDisplay();
    display->Apply(vetch::ViewMade{description});
    display->Apply(vetch::ListColoured{Token(), selectionColour});
    for (long i = 0; i < CountItems(); ++i)
        display->Apply(vetch::ListItemAdded{Token(), i, TextOf(i)});
    if (selection >= 0)
        display->Apply(vetch::ListSelected{Token(), selection});
}

void BListView::SetSelection(long index)
{
    selection = index;
    if (Window() != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::ListSelected{Token(), selection});
}

void BListView::KeyDown(const BMessage& message)
{
    int8 key = 0;
    if (message.FindInt8("byte", 0, &key) != B_OK)
        return;
    if (key == B_DOWN_ARROW && selection + 1 < CountItems())
        SetSelection(selection + 1);
    else if (key == B_UP_ARROW && selection > 0)
        SetSelection(selection - 1);
    else if (key == B_SPACE || key == B_ENTER)
        Invoke();
}

void BListView::MouseDown(const BMessage& message)
{
    int32 index = -1;
    int32 clicks = 1;
    message.FindInt32("index", &index);
    message.FindInt32("clicks", &clicks);
    Select(index);
    if (selection >= 0 && clicks == 2)
        Invoke();
}

std::string BListView::TextOf(long index) const
{
    const auto* item = dynamic_cast<const BStringItem*>(items[index]);
    return item == nullptr ? "" : item->Text();
}
