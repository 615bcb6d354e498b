#include "vetch/interface/BControl.h"

#include "Desk.h"
#include "vetch/interface/BButton.h"
#include "vetch/interface/BCheckBox.h"
#include "vetch/interface/BTextControl.h"
#include "vetch/interface/DialogHelper.h"
#include "vetch/interface/InterfaceFile.h"
#include "vetch/storage/Bundle.h"
#include "vetch/support/BNotifier.h"

namespace {

constexpr uint32 kChanged = FourCC("valC");

// A value that tells its watchers when it really changes, and counts how often it was set.
template <class T>
class Setting : public BNotifier {
public:
    explicit Setting(T value) : value(std::move(value)) {}

    T value;
    int timesSet = 0;

    void Set(T newValue)
    {
        ++timesSet;
        if (newValue == value)
            return;
        value = std::move(newValue);
        SendNotices(kChanged);
    }
};

class Switch : public Setting<bool> {
public:
    using Setting::Setting;
    bool Value() const { return value; }
    void SetValue(bool on) { Set(on); }
};

class Words : public Setting<std::string> {
public:
    using Setting::Setting;
    const char* Value() const { return value.c_str(); }
    void SetValue(const char* text) { Set(text); }
};

void Bind(Switch& setting, BCheckBox& box)
{
    box.SetValueGetter(new BCheckBox::ValueGetterGlue<Switch>(&Switch::Value, &setting));
    box.SetValueApplicator(new BCheckBox::ValueApplicatorGlue<Switch>(&Switch::SetValue, &setting));
    setting.StartWatchingBy(&box, kChanged);
}

void Bind(Words& setting, BTextControl& control)
{
    control.SetValueGetter(new BTextControlBase::ValueGetterGlue<Words>(&Words::Value, &setting));
    control.SetValueApplicator(new BTextControlBase::ValueApplicatorGlue<Words>(&Words::SetValue, &setting));
    setting.StartWatchingBy(&control, kChanged);
}

// A panel on the document thread, as preferences are, made from a bundle with a check box 1, a text field 2, a button 3
// and a field of several lines 4.
class PanelWindow : public BWindow {
public:
    PanelWindow()
        : BWindow({0, 0, 300, 200}, "Panel", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0, vetch::Service::Application)
    {
        __CFBundle bundle{TEST_DATA "/interface/Controls.bundle"};
        panel = vetch::MakeViewFromNib(&bundle, "Controls", "panel");
        AddChild(panel);
        panel->AddChildFromNib(box = new BCheckBox, 1);
        panel->AddChildFromNib(field = new BTextControl, 2);
        panel->AddChildFromNib(button = new BButton, 3);
        panel->AddChildFromNib(page = new BTextControl, 4);
        box->SetMessage(new BMessage(FourCC("box ")));
        field->SetMessage(new BMessage(FourCC("fld ")));
        button->SetMessage(new BMessage(FourCC("btn ")));
    }
    void MessageReceived(BMessage* message) override
    {
        invoked.push_back(message->what);
        BWindow::MessageReceived(message);
    }

    BView* panel;
    BCheckBox* box;
    BTextControl* field;
    BButton* button;
    BTextControl* page;
    std::vector<uint32> invoked;
};

class Controls : public Desk {
protected:
    Controls() { window->Show(); }

    // The control with that item number as the display has it.
    vetch::HeadlessDisplay::ControlState Shown(long item) const
    {
        for (const auto& control : Only().controls)
            if (control.item == item)
                return control;
        ADD_FAILURE() << "no control " << item;
        return {};
    }

    PanelWindow* const window = new PanelWindow;
};

using Codes = std::vector<uint32>;

TEST_F(Controls, StandWhereTheInterfaceFilePutThem)
{
    using Kind = vetch::ViewDescription::Kind;
    EXPECT_EQ(Only().controls.size(), 4u);
    EXPECT_EQ(Shown(1).kind, Kind::CheckBox);
    EXPECT_EQ(Shown(1).text, "Follow");
    EXPECT_EQ(Shown(1).frame, (BRect{10, 10, 110, 30}));
    EXPECT_TRUE(Shown(1).on);
    EXPECT_TRUE(window->box->Value());
    EXPECT_EQ(Shown(2).kind, Kind::Text);
    EXPECT_EQ(Shown(2).text, "initial");
    EXPECT_EQ(Shown(2).frame, (BRect{25, 47, 125, 67})) << "its group's place is added";
    EXPECT_EQ(Shown(3).kind, Kind::Button);
    EXPECT_EQ(window->button->Label(), "Go");
    EXPECT_EQ(window->button->Item(), 3);
    EXPECT_STREQ(window->page->Text(), "one\ntwo");
}

TEST_F(Controls, PressingAButtonInvokesItToItsWindow)
{
    EXPECT_TRUE(display.Press(1, 3));
    vetch::Settle();
    EXPECT_EQ(window->invoked, Codes{FourCC("btn ")});
}

TEST_F(Controls, ASwitchedBoxAppliesItsValueAndIsInvoked)
{
    Switch setting(true);
    Bind(setting, *window->box);
    EXPECT_TRUE(display.Check(1, 1, false));
    vetch::Settle();
    EXPECT_FALSE(setting.value);
    EXPECT_EQ(setting.timesSet, 1);
    EXPECT_FALSE(window->box->Value());
    EXPECT_FALSE(Shown(1).on);
    EXPECT_EQ(window->invoked, Codes{FourCC("box ")});
}

TEST_F(Controls, ABoxTakesItsValueFromItsGetterAtOnceAndAtEachNotice)
{
    Switch setting(false);
    Bind(setting, *window->box);
    EXPECT_FALSE(window->box->Value());
    setting.SetValue(true);
    EXPECT_TRUE(window->box->Value());
    EXPECT_TRUE(Shown(1).on);
    EXPECT_EQ(setting.timesSet, 1) << "a refresh applies nothing";
}

TEST_F(Controls, SettingAValueFromCodeAppliesNothing)
{
    Switch setting(false);
    Words words("one");
    Bind(setting, *window->box);
    Bind(words, *window->field);
    window->box->SetValue(true);
    window->field->SetText("two");
    vetch::Settle();
    EXPECT_EQ(setting.timesSet, 0);
    EXPECT_EQ(words.timesSet, 0);
    EXPECT_TRUE(Shown(1).on);
    EXPECT_EQ(Shown(2).text, "two");
    EXPECT_TRUE(window->invoked.empty());
}

TEST_F(Controls, AnEnteredTextIsAppliedAndInvokes)
{
    Words words("one");
    Bind(words, *window->field);
    EXPECT_STREQ(window->field->Text(), "one");
    EXPECT_TRUE(display.Enter(1, 2, "typed"));
    vetch::Settle();
    EXPECT_EQ(words.value, "typed");
    EXPECT_EQ(words.timesSet, 1);
    EXPECT_STREQ(window->field->Text(), "typed");
    EXPECT_EQ(Shown(2).text, "typed");
    EXPECT_EQ(Shown(2).selectionStart, 5);
    EXPECT_EQ(window->invoked, Codes{FourCC("fld ")});
}

TEST_F(Controls, TypingOnlyChangesTheText)
{
    Words words("one");
    Bind(words, *window->field);
    BMessage edit(vetch::kTextEdited);
    edit.AddString("text", "onee");
    edit.AddInt32("start", 2);
    edit.AddInt32("end", 3);
    vetch::PostToHandler(window->field->Token(), edit);
    vetch::Settle();
    EXPECT_STREQ(window->field->Text(), "onee");
    EXPECT_EQ(Shown(2).selectionStart, 2);
    EXPECT_EQ(Shown(2).selectionEnd, 3);
    EXPECT_EQ(words.timesSet, 0);
    EXPECT_TRUE(window->invoked.empty());
}

TEST_F(Controls, LeavingAFieldAppliesItsCurrentText)
{
    Words words("one");
    Bind(words, *window->field);
    window->field->SetText("two");
    vetch::PostToHandler(window->field->Token(), BMessage(vetch::kTextEntered));
    vetch::Settle();
    EXPECT_EQ(words.value, "two");
}

TEST_F(Controls, ARefreshWithTheSameTextLeavesTheSelectionAlone)
{
    Words words("same text");
    Bind(words, *window->field);
    window->field->Select(2, 4);
    words.SendNotices(kChanged);
    long start = 0;
    long end = 0;
    window->field->GetSelection(&start, &end);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 4);
    words.SetValue("another text");
    EXPECT_EQ(Shown(2).text, "another text");
    window->field->GetSelection(&start, &end);
    EXPECT_EQ(start, 12);
    EXPECT_EQ(end, 12);
}

// Rewrites what the user entered, as a field does that shows its value in another form.
class Upper : public BTextControlValueApplicator {
public:
    explicit Upper(Words& words) : words(words) {}
    void Invoke(const BTextControlBase* control) override
    {
        auto* field = const_cast<BTextControl*>(dynamic_cast<const BTextControl*>(control));
        std::string text = field->Text();
        for (char& letter : text)
            letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        long start = 0;
        long end = 0;
        field->GetSelection(&start, &end);
        field->SetText(text.c_str());
        field->Select(start, end);
        words.SetValue(text.c_str());
    }

private:
    Words& words;
};

TEST_F(Controls, AnApplicatorMayRewriteTheTextAndKeepTheSelection)
{
    Words words("ONE");
    Bind(words, *window->field);
    window->field->SetValueApplicator(new Upper(words));
    BMessage entered(vetch::kTextEntered);
    entered.AddString("text", "two");
    entered.AddInt32("start", 1);
    entered.AddInt32("end", 2);
    vetch::PostToHandler(window->field->Token(), entered);
    vetch::Settle();
    EXPECT_EQ(words.value, "TWO");
    EXPECT_EQ(words.timesSet, 1);
    EXPECT_EQ(Shown(2).text, "TWO");
    EXPECT_EQ(Shown(2).selectionStart, 1);
    EXPECT_EQ(Shown(2).selectionEnd, 2);
}

struct SelectionCase {
    const char* why;
    long start, end, thenStart, thenEnd;
};

TEST_F(Controls, ASelectionIsKeptWithinTheText)
{
    const SelectionCase cases[] = {
        {"within", 1, 3, 1, 3},
        {"a caret", 2, 2, 2, 2},
        {"beyond the end", 3, 99, 3, 5},
        {"before the beginning", -4, 2, 0, 2},
        {"the wrong way round is a caret", 4, 2, 4, 4},
    };
    window->field->SetText("abcde");
    for (const SelectionCase& c : cases) {
        window->field->Select(c.start, c.end);
        long start = -1;
        long end = -1;
        window->field->GetSelection(&start, &end);
        EXPECT_EQ(start, c.thenStart) << c.why;
        EXPECT_EQ(end, c.thenEnd) << c.why;
        EXPECT_EQ(Shown(2).selectionStart, c.thenStart) << c.why;
        EXPECT_EQ(Shown(2).selectionEnd, c.thenEnd) << c.why;
    }
}

TEST_F(Controls, SelectAllSelectsTheWholeText)
{
    window->field->SetText("abcde");
    DialogHelper::SelectAll(window->field);
    EXPECT_EQ(Shown(2).selectionStart, 0);
    EXPECT_EQ(Shown(2).selectionEnd, 5);
    BTextControl alone;
    DialogHelper::SelectAll(&alone);
}

TEST_F(Controls, ADeadControlStopsWatchingItsSetting)
{
    Switch setting(false);
    {
        BCheckBox box;
        Bind(setting, box);
        setting.SetValue(true);
        EXPECT_TRUE(box.Value()) << "a box needs no window to follow its setting";
    }
    setting.SetValue(false);
    EXPECT_EQ(setting.timesSet, 2);
}

TEST_F(Controls, ADeadSettingIsNoLongerWatched)
{
    auto setting = std::make_unique<Switch>(true);
    setting->StartWatchingBy(window->box, kChanged);
    setting.reset();
    EXPECT_TRUE(display.Check(1, 1, false));
    vetch::Settle();
    EXPECT_FALSE(window->box->Value());
}

class CountedGetter : public BCheckBoxValueGetter {
public:
    explicit CountedGetter(int& live) : live(live) { ++live; }
    ~CountedGetter() override { --live; }
    bool Value() const override { return true; }

private:
    int& live;
};

class CountedApplicator : public BTextControlValueApplicator {
public:
    explicit CountedApplicator(int& live) : live(live) { ++live; }
    ~CountedApplicator() override { --live; }
    void Invoke(const BTextControlBase*) override {}

private:
    int& live;
};

TEST_F(Controls, OwnTheirGettersAndApplicators)
{
    int live = 0;
    {
        BCheckBox box;
        BTextControl field;
        box.SetValueGetter(new CountedGetter(live));
        box.SetValueGetter(new CountedGetter(live));
        field.SetValueApplicator(new CountedApplicator(live));
        field.SetValueApplicator(new CountedApplicator(live));
        EXPECT_EQ(live, 2);
    }
    EXPECT_EQ(live, 0);
}

TEST_F(Controls, AGetterOutranksTheValueInTheInterfaceFile)
{
    Switch setting(false);
    Words words("kept");
    auto* box = new BCheckBox;
    auto* field = new BTextControl;
    Bind(setting, *box);
    Bind(words, *field);
    __CFBundle bundle{TEST_DATA "/interface/Controls.bundle"};
    std::unique_ptr<BView> panel(vetch::MakeViewFromNib(&bundle, "Controls", "panel"));
    panel->AddChildFromNib(box, 1);
    panel->AddChildFromNib(field, 2);
    EXPECT_FALSE(box->Value());
    EXPECT_STREQ(field->Text(), "kept");
}

struct UnattachedCase {
    const char* why;
    long item;
};

TEST_F(Controls, AControlMissingFromTheFileStaysUnattachedAndHarmless)
{
    const UnattachedCase cases[] = {
        {"no such number", 99},
        {"zero is what labels have", 0},
        {"taken already", 3},
        {"another kind of control", 5},
    };
    for (const UnattachedCase& c : cases) {
        auto* button = new BButton;
        button->SetMessage(new BMessage(FourCC("oops")));
        window->panel->AddChildFromNib(button, c.item);
        EXPECT_EQ(button->Window(), nullptr) << c.why;
        EXPECT_EQ(button->Parent(), nullptr) << c.why;
        EXPECT_EQ(button->Item(), 0) << c.why;
        EXPECT_EQ(button->Invoke(), B_ERROR) << c.why;
        button->MakeFocus();
    }
    EXPECT_EQ(Only().controls.size(), 4u);
    EXPECT_EQ(window->FocusView(), nullptr);
}

TEST_F(Controls, HiddenOrMissingControlsCannotBeUsed)
{
    EXPECT_FALSE(display.Press(1, 1)) << "a check box is not a button";
    EXPECT_FALSE(display.Check(1, 2, true)) << "a text field is not a check box";
    EXPECT_FALSE(display.Enter(1, 3, "text")) << "a button is not a text field";
    EXPECT_FALSE(display.Press(1, 99)) << "no such item";
    EXPECT_FALSE(display.Press(2, 3)) << "no such window";
    EXPECT_FALSE(display.InvokeItem(1, 0)) << "no list";
    window->Hide();
    EXPECT_FALSE(display.Press(1, 3)) << "hidden";
    EXPECT_FALSE(display.Close(1)) << "hidden";
    EXPECT_FALSE(display.ResizeByUser(1, 10, 10)) << "hidden";
    vetch::Settle();
    EXPECT_TRUE(window->invoked.empty());
}

} // namespace
