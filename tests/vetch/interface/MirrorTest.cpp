// Whatever happens, what the display shows is what the models hold.
#include "Desk.h"
#include "vetch/app/Modifiers.h"
#include "vetch/interface/BCheckBox.h"
#include "vetch/interface/BTextControl.h"
#include "vetch/interface/InterfaceFile.h"
#include "vetch/storage/Bundle.h"

#include <random>
#include <set>

namespace {

using vetch::HeadlessDisplay;

// A list, and a panel with a check box 1 and a text field 2.
class Subject : public ListWindow {
public:
    explicit Subject(uint32 flags) : ListWindow(flags)
    {
        __CFBundle bundle{TEST_DATA "/interface/Controls.bundle"};
        BView* panel = vetch::MakeViewFromNib(&bundle, "Controls", "panel");
        AddChild(panel);
        panel->AddChildFromNib(box = new BCheckBox, 1);
        panel->AddChildFromNib(field = new BTextControl, 2);
    }

    BCheckBox* box = nullptr;
    BTextControl* field = nullptr;
};

BRect InWindow(const BView* view)
{
    BRect frame = view->Frame();
    for (const BView* above = view->Parent(); above != nullptr; above = above->Parent()) {
        const BRect outer = above->Frame();
        frame = {frame.left + outer.left, frame.top + outer.top, frame.right + outer.left, frame.bottom + outer.top};
    }
    return frame;
}

void ExpectSameList(const BListView& list, const HeadlessDisplay::ListState& shown)
{
    std::vector<std::string> texts;
    for (long i = 0; i < list.CountItems(); ++i)
        texts.push_back(static_cast<const BStringItem*>(list.ItemAt(i))->Text());
    EXPECT_EQ(shown.items, texts);
    EXPECT_EQ(shown.selected, list.CurrentSelection());
    EXPECT_EQ(shown.frame, InWindow(&list));
    EXPECT_EQ(shown.focus, list.Window()->FocusView() == &list);
}

void ExpectSameWindow(const Subject& window, const HeadlessDisplay::WindowState& shown)
{
    EXPECT_EQ(shown.title, window.Title());
    EXPECT_EQ(shown.frame, window.Frame());
    EXPECT_EQ(shown.visible, !window.IsHidden());
    EXPECT_EQ(shown.active, window.IsActive());
    ASSERT_TRUE(shown.list);
    ExpectSameList(*window.list, *shown.list);
    ASSERT_EQ(shown.controls.size(), 2u);
    EXPECT_EQ(shown.controls[0].on, window.box->Value());
    EXPECT_EQ(shown.controls[0].focus, window.FocusView() == window.box);
    EXPECT_EQ(shown.controls[0].frame, InWindow(window.box));
    EXPECT_EQ(shown.controls[1].text, window.field->Text());
    EXPECT_EQ(shown.controls[1].focus, window.FocusView() == window.field);
    long start = 0;
    long end = 0;
    window.field->GetSelection(&start, &end);
    EXPECT_EQ(shown.controls[1].selectionStart, start);
    EXPECT_EQ(shown.controls[1].selectionEnd, end);
}

class Mirror : public Desk {
protected:
    long Number(long below) { return static_cast<long>(random() % static_cast<unsigned long>(below)); }
    float Length(long below) { return static_cast<float>(Number(below)); }
    std::string Word() { return std::string(Number(4), static_cast<char>('a' + Number(26))); }

    void Make()
    {
        auto* made = new Subject(Number(2) == 0 ? B_AVOID_FOCUS : 0);
        live.insert(made->LooperToken());
        if (Number(3) > 0)
            made->Show();
    }
    void Quit(Subject& window)
    {
        live.erase(window.LooperToken());
        window.Quit();
    }
    void ChangeList(Subject& window)
    {
        const long place = Number(window.list->CountItems() + 2) - 1;
        switch (Number(5)) {
        case 0:
            return window.Refill(Number(12));
        case 1:
            return window.Add(Word());
        case 2:
            window.list->RemoveItem(place);
            return;
        case 3:
            return window.list->Select(place);
        default:
            if (auto* item = dynamic_cast<BStringItem*>(window.list->ItemAt(place)))
                item->SetText(Word().c_str());
            window.list->InvalidateItem(place);
        }
    }
    void ChangeControls(Subject& window)
    {
        BView* const views[] = {window.list, window.box, window.field};
        switch (Number(4)) {
        case 0:
            return window.field->SetText(Word().c_str());
        case 1:
            return window.field->Select(Number(5), Number(5));
        case 2:
            return window.box->SetValue(Number(2) == 0);
        default:
            views[Number(3)]->MakeFocus(Number(4) > 0);
        }
    }
    void ChangeFrame(Subject& window)
    {
        switch (Number(4)) {
        case 0:
            return window.MoveTo(Length(500), Length(500));
        case 1:
            return window.ResizeTo(Length(500), Length(500));
        case 2:
            return window.SetTitle(Word().c_str());
        default:
            const float least = Length(200);
            window.SetSizeLimits(least, Length(400), Length(200), Length(400));
        }
    }
    void ChangePresence(Subject& window)
    {
        switch (Number(3)) {
        case 0:
            return window.Show();
        case 1:
            return window.Hide();
        default:
            window.Activate(Number(2) == 0);
        }
    }
    void ActAsUser(const HeadlessDisplay::WindowState& shown)
    {
        const int8 keys[] = {B_UP_ARROW, B_DOWN_ARROW, B_SPACE, 'x'};
        BMessage key(B_KEY_DOWN);
        switch (Number(6)) {
        case 0:
            display.ClickItem(shown.number, Number(6));
            return;
        case 1:
            display.InvokeItem(shown.number, Number(6));
            return;
        case 2:
            display.Enter(shown.number, 2, Word());
            return;
        case 3:
            display.Check(shown.number, 1, Number(2) == 0);
            return;
        case 4:
            display.ResizeByUser(shown.number, Length(500), Length(500));
            return;
        default:
            key.AddInt8("byte", keys[Number(4)]);
            auto& window = static_cast<Subject&>(*vetch::FindLooper(shown.token));
            vetch::PostToHandler(window.list->Token(), key);
        }
    }
    void Change(Subject& window)
    {
        if (!window.Lock())
            return;
        switch (Number(4)) {
        case 0:
            ChangeList(window);
            break;
        case 1:
            ChangeControls(window);
            break;
        case 2:
            ChangeFrame(window);
            break;
        default:
            ChangePresence(window);
        }
        window.Unlock();
    }
    void Step()
    {
        const auto windows = display.Windows();
        if (windows.size() < 2 || (windows.size() < 6 && Number(10) == 0))
            return Make();
        const auto& shown = windows[Number(static_cast<long>(windows.size()))];
        auto& window = static_cast<Subject&>(*vetch::FindLooper(shown.token));
        if (Number(40) == 0)
            Quit(window);
        else if (Number(3) == 0)
            ActAsUser(shown);
        else
            Change(window);
    }
    void Compare()
    {
        vetch::Settle();
        std::set<vetch::LooperToken> shown;
        for (const auto& state : display.Windows()) {
            shown.insert(state.token);
            ExpectSameWindow(static_cast<const Subject&>(*vetch::FindLooper(state.token)), state);
        }
        EXPECT_EQ(shown, live);
    }

    std::mt19937 random{20260};
    std::set<vetch::LooperToken> live;
};

TEST_F(Mirror, MatchesTheModelsAfterRandomOperations)
{
    for (int round = 0; round < 400 && !HasFailure(); ++round) {
        for (int step = 0; step < 12; ++step)
            Step();
        SCOPED_TRACE("round " + std::to_string(round));
        Compare();
    }
}

} // namespace
