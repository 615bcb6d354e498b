#include "vetch/interface/BListView.h"

#include "Desk.h"
#include "vetch/app/Modifiers.h"

namespace {

class List : public Desk {
protected:
    // Shows a window with 'count' items of which 'selected' is selected.
    ListWindow* Open(long count, long selected)
    {
        auto* window = new ListWindow;
        window->Refill(count);
        window->list->Select(selected);
        window->Show();
        return window;
    }
};

struct KeyCase {
    const char* why;
    long count;
    long selected;
    std::vector<int8> keys;
    long thenSelected;
    std::vector<int32> looks;
};

TEST_F(List, KeysMoveTheSelectionAndInvoke)
{
    const KeyCase cases[] = {
        {"down with nothing selected selects the first", 3, -1, {B_DOWN_ARROW}, 0, {}},
        {"down moves on", 3, 0, {B_DOWN_ARROW, B_DOWN_ARROW}, 2, {}},
        {"down stops at the last", 3, 2, {B_DOWN_ARROW}, 2, {}},
        {"down in an empty list", 0, -1, {B_DOWN_ARROW}, -1, {}},
        {"up moves back", 3, 2, {B_UP_ARROW}, 1, {}},
        {"up stops at the first", 3, 0, {B_UP_ARROW}, 0, {}},
        {"up with nothing selected selects nothing", 3, -1, {B_UP_ARROW}, -1, {}},
        {"space invokes", 3, 1, {B_SPACE}, 1, {1}},
        {"enter invokes", 3, 2, {B_ENTER}, 2, {2}},
        {"enter with nothing selected sends no index", 3, -1, {B_ENTER}, -1, {-1}},
        {"other keys do nothing", 3, 1, {'a', 0x1b}, 1, {}},
    };
    for (const KeyCase& c : cases) {
        ListWindow* window = Open(c.count, c.selected);
        for (const int8 key : c.keys) {
            BMessage message(B_KEY_DOWN);
            message.AddInt8("byte", key);
            message.AddInt32("modifiers", 0);
            window->PostMessage(&message, window->list);
        }
        vetch::Settle();
        EXPECT_EQ(window->list->CurrentSelection(), c.thenSelected) << c.why;
        EXPECT_EQ(Only().list->selected, c.thenSelected) << c.why;
        EXPECT_EQ(window->looks, c.looks) << c.why;
        window->Quit();
    }
}

TEST_F(List, AKeyMessageWithoutAByteChangesNothing)
{
    ListWindow* window = Open(3, 1);
    const BMessage message(B_KEY_DOWN);
    window->PostMessage(&message, window->list);
    vetch::Settle();
    EXPECT_EQ(window->list->CurrentSelection(), 1);
    EXPECT_TRUE(window->looks.empty());
}

struct MouseCase {
    const char* why;
    int32 index;
    int32 clicks;
    long thenSelected;
    std::vector<int32> looks;
};

TEST_F(List, TheMouseSelectsAndADoubleClickInvokes)
{
    const MouseCase cases[] = {
        {"a click selects", 2, 1, 2, {}},
        {"a double click selects and invokes", 2, 2, 2, {2}},
        {"a third click of a row does not invoke again", 2, 3, 2, {}},
        {"a click below the items selects none", 3, 1, -1, {}},
        {"a double click below the items invokes none", 3, 2, -1, {}},
        {"a negative index is not an item", -1, 2, -1, {}},
    };
    for (const MouseCase& c : cases) {
        ListWindow* window = Open(3, 0);
        BMessage message(B_MOUSE_DOWN);
        message.AddInt32("index", c.index);
        message.AddInt32("clicks", c.clicks);
        window->PostMessage(&message, window->list);
        vetch::Settle();
        EXPECT_EQ(window->list->CurrentSelection(), c.thenSelected) << c.why;
        EXPECT_EQ(window->looks, c.looks) << c.why;
        window->Quit();
    }
}

struct RemovalCase {
    const char* why;
    long selected;
    long removed;
    long thenSelected;
};

TEST_F(List, TheSelectionStaysWithItsItemWhenOthersAreRemoved)
{
    const RemovalCase cases[] = {
        {"the selected one goes", 1, 1, -1},
        {"one before it goes", 2, 0, 1},
        {"one behind it goes", 1, 2, 1},
        {"nothing is selected", -1, 0, -1},
    };
    for (const RemovalCase& c : cases) {
        ListWindow* window = Open(3, c.selected);
        ASSERT_TRUE(window->Lock());
        EXPECT_EQ(window->list->RemoveItem(c.removed), window->items[c.removed].get()) << c.why;
        EXPECT_EQ(window->list->CurrentSelection(), c.thenSelected) << c.why;
        window->Unlock();
        EXPECT_EQ(Only().list->selected, c.thenSelected) << c.why;
        EXPECT_EQ(Only().list->items.size(), 2u) << c.why;
        window->Quit();
    }
}

TEST_F(List, IndicesOutsideTheListGiveNoItem)
{
    ListWindow* window = Open(2, 1);
    for (const long index : {-1L, 2L, 1000L}) {
        EXPECT_EQ(window->list->ItemAt(index), nullptr) << index;
        EXPECT_EQ(window->list->RemoveItem(index), nullptr) << index;
    }
    EXPECT_EQ(window->list->CountItems(), 2);
    EXPECT_EQ(window->list->CurrentSelection(), 1);
    window->list->Select(2);
    EXPECT_EQ(window->list->CurrentSelection(), -1);
    EXPECT_FALSE(window->list->AddItem(nullptr));
    EXPECT_EQ(window->list->CountItems(), 2);
}

class MortalItem : public BStringItem {
public:
    MortalItem(int& deaths) : BStringItem("mortal"), deaths(deaths) {}
    ~MortalItem() override { ++deaths; }

private:
    int& deaths;
};

TEST_F(List, NeitherRemovalNorTheListsEndDeletesAnItem)
{
    int deaths = 0;
    MortalItem kept(deaths);
    MortalItem removed(deaths);
    auto* window = new ListWindow;
    window->list->AddItem(&kept);
    window->list->AddItem(&removed);
    window->list->RemoveItem(1);
    window->Quit();
    EXPECT_EQ(deaths, 0);
}

TEST_F(List, InvokeSendsACopyOfTheMessageItIsGiven)
{
    ListWindow* window = Open(3, 1);
    BMessage other(ListWindow::kLook);
    other.AddString("note", "kept");
    EXPECT_EQ(window->list->Invoke(&other), B_OK);
    int32 index = 0;
    EXPECT_EQ(other.FindInt32("index", &index), B_ERROR) << "the index is added to the copy alone";
    vetch::Settle();
    EXPECT_EQ(window->looks, std::vector<int32>{1});
}

TEST_F(List, InvokeDoesNothingWithoutAMessage)
{
    ListWindow* window = Open(3, 1);
    window->list->SetInvocationMessage(nullptr);
    EXPECT_EQ(window->list->Invoke(), B_ERROR);
    vetch::Settle();
    EXPECT_TRUE(window->looks.empty());
}

TEST_F(List, SendsToAnotherTargetOnRequest)
{
    ListWindow* window = Open(2, 0);
    auto* other = new ListWindow;
    other->Show();
    ASSERT_TRUE(window->Lock());
    window->list->SetTarget(other);
    window->list->Invoke();
    window->Unlock();
    vetch::Settle();
    EXPECT_TRUE(window->looks.empty());
    EXPECT_EQ(other->looks, std::vector<int32>{0});
}

TEST_F(List, ShowsItemsAddedBeforeItHadAWindow)
{
    BStringItem first("first");
    BStringItem second("second");
    auto* list = new BListView({0, 0, 100, 100}, "list", B_SINGLE_SELECTION_LIST, 0, 0);
    list->AddItem(&first);
    list->AddItem(&second);
    list->Select(1);
    list->SetSelectionColor({1, 2, 3, 4});
    auto* window = new BWindow({0, 0, 100, 100}, "", 1, 1, 0);
    window->AddChild(list);
    const auto shown = *Only().list;
    EXPECT_EQ(shown.items, Lines({"first", "second"}));
    EXPECT_EQ(shown.selected, 1);
    EXPECT_EQ(shown.colour, (rgb_color{1, 2, 3, 4}));
    window->Quit();
}

TEST_F(List, AChangedTextAppearsAfterAnUpdate)
{
    ListWindow* window = Open(2, 0);
    window->items[1]->SetText("changed");
    window->list->InvalidateItem(1);
    window->list->InvalidateItem(2);
    EXPECT_EQ(Only().list->items, Lines({"item 0", "changed"}));
}

TEST_F(List, AnItemWithoutATextShowsAsAnEmptyLine)
{
    BListItem plain(3, false);
    auto* window = new ListWindow;
    window->list->AddItem(&plain);
    EXPECT_EQ(Only().list->items, Lines({""}));
    EXPECT_EQ(plain.OutlineLevel(), 3u);
    EXPECT_FALSE(plain.IsExpanded());
    window->Quit();
}

// A filter that stops every other press of the mouse, and counts them all.
class EveryOther : public BMessageFilter {
public:
    explicit EveryOther(int& seen) : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE), seen(seen) {}
    filter_result Filter(BMessage* message, BHandler**) override
    {
        if (message->what != B_MOUSE_DOWN)
            return B_DISPATCH_MESSAGE;
        return ++seen % 2 == 1 ? B_SKIP_MESSAGE : B_DISPATCH_MESSAGE;
    }

private:
    int& seen;
};

TEST_F(List, FiltersSeeTheMouseBeforeItSelects)
{
    int seen = 0;
    auto* window = new ListWindow;
    window->Refill(3);
    window->list->AddFilter(new EveryOther(seen));
    window->Show();
    EXPECT_TRUE(display.ClickItem(1, 2));
    vetch::Settle();
    EXPECT_EQ(Only().list->selected, -1);
    EXPECT_TRUE(display.ClickItem(1, 2));
    vetch::Settle();
    EXPECT_EQ(Only().list->selected, 2);
    EXPECT_EQ(seen, 2);
}

} // namespace
