// One story, told on the display without a screen and on the desktop: the framework cannot tell them apart.
#include "QtDesk.h"

#include "tests/support/TestBundle.h"
#include "vetch/display/HeadlessDisplay.h"
#include "vetch/interface/InterfaceFile.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace {

using Diary = std::vector<std::string>;

const long kPatternsField = 23;
const long kCompleteBox = 14;
const long kLookUpButton = 2;

// Controls of an interface file; each writes down what it hears of.
class Panel : public DiaryWindow {
public:
    explicit Panel(TestBundle& bundle)
        : DiaryWindow({20, 20, 500, 516}, "Panel", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0)
    {
        BView* settings = vetch::MakeViewFromNib(&bundle.bundle, "DeclarationDialogs", "org.wren.Declaration");
        settings->AddChildFromNib(field, kPatternsField);
        settings->AddChildFromNib(box, kCompleteBox);
        AddChild(settings);
        BView* dialog = vetch::MakeViewFromNib(&bundle.bundle, "DeclarationDialogs", "EntryWindow");
        dialog->AddChildFromNib(button, kLookUpButton);
        AddChild(dialog);
        field->SetMessage(new BMessage(FourCC("entr")));
        box->SetMessage(new BMessage(FourCC("chck")));
        button->SetMessage(new BMessage(FourCC("pres")));
        field->SetText("*.h");
        field->MakeFocus();
    }

    void MessageReceived(BMessage* message) override
    {
        long start = 0;
        long end = 0;
        field->GetSelection(&start, &end);
        const std::string state = std::string(field->Text()) + " " + std::to_string(start) + "-" + std::to_string(end) +
                                  (box->Value() ? " on" : " off");
        if (message->what == FourCC("entr"))
            diary.push_back("entered " + state);
        else if (message->what == FourCC("chck"))
            diary.push_back("checked " + state);
        else if (message->what == FourCC("pres"))
            diary.push_back("pressed " + state);
        else
            DiaryWindow::MessageReceived(message);
    }

    BTextControl* field = new BTextControl;
    BCheckBox* box = new BCheckBox;
    BButton* button = new BButton;
};

// What the user does, to the one window with that title.
class Hands {
public:
    virtual ~Hands() = default;
    virtual void Settle() = 0;
    virtual void ClickItem(const BWindow* window, int index) = 0;
    virtual void InvokeItem(const BWindow* window, int index) = 0;
    virtual void Resize(const BWindow* window, int width, int height) = 0;
    virtual void Enter(const Panel* panel, const std::string& text) = 0;
    virtual void Check(const Panel* panel, bool on) = 0;
    virtual void Press(const Panel* panel) = 0;
    virtual void Close(const BWindow* window) = 0;
};

std::string Frame(const BWindow& window)
{
    const BRect frame = window.Frame();
    std::string text = "frame";
    for (const float side : {frame.left, frame.top, frame.right, frame.bottom})
        text += " " + std::to_string(static_cast<int>(side));
    return text;
}

void TellOfResults(Hands& hands, Diary& diary)
{
    auto* results = new ResultList;
    results->Fill(6);
    results->SetSizeLimits(100, 200, 57, 120);
    results->Show();
    hands.Settle();
    hands.ClickItem(results, 4);
    hands.Settle();
    diary.push_back("selected " + std::to_string(results->list->CurrentSelection()));
    hands.InvokeItem(results, 1);
    hands.Settle();
    hands.Resize(results, 90, 500);
    hands.Settle();
    diary.push_back(Frame(*results));
    hands.Close(results);
    hands.Settle();
    diary.push_back(results->IsActive() ? "active" : "inactive");
    diary.insert(diary.end(), results->diary.begin(), results->diary.end());
}

void TellOfControls(Hands& hands, Diary& diary, TestBundle& bundle)
{
    auto* panel = new Panel(bundle);
    panel->Show();
    hands.Settle();
    diary.push_back(panel->IsActive() ? "active" : "inactive");
    hands.Enter(panel, "größer *.cpp");
    hands.Settle();
    for (const bool on : {false, true}) {
        hands.Check(panel, on);
        hands.Settle();
    }
    hands.Press(panel);
    hands.Settle();
    hands.Close(panel);
    hands.Settle();
    diary.insert(diary.end(), panel->diary.begin(), panel->diary.end());
}

class HeadlessHands : public Hands {
public:
    explicit HeadlessHands(vetch::HeadlessDisplay& display) : display(display) {}
    void Settle() override { vetch::Settle(); }
    void ClickItem(const BWindow* window, int index) override { display.ClickItem(Number(window), index); }
    void InvokeItem(const BWindow* window, int index) override { display.InvokeItem(Number(window), index); }
    void Resize(const BWindow* window, int width, int height) override
    {
        display.ResizeByUser(Number(window), static_cast<float>(width), static_cast<float>(height));
    }
    void Enter(const Panel* panel, const std::string& text) override
    {
        display.Enter(Number(panel), kPatternsField, text);
    }
    void Check(const Panel* panel, bool on) override { display.Check(Number(panel), kCompleteBox, on); }
    void Press(const Panel* panel) override { display.Press(Number(panel), kLookUpButton); }
    void Close(const BWindow* window) override { display.Close(Number(window)); }

private:
    long Number(const BWindow* window) const
    {
        for (const auto& state : display.Windows())
            if (state.token == window->LooperToken())
                return state.number;
        return 0;
    }

    vetch::HeadlessDisplay& display;
};

class BothDisplays : public QtDesk, public Hands {
protected:
    void Settle() override { QtDesk::Settle(); }
    void ClickItem(const BWindow* window, int index) override { Click(window, index, &QTest::mouseClick); }
    void InvokeItem(const BWindow* window, int index) override { Click(window, index, &QTest::mouseDClick); }
    void Resize(const BWindow* window, int width, int height) override
    {
        const BRect before = window->Frame();
        PeerOf(window)->resize(width, height);
        EXPECT_TRUE(QTest::qWaitFor([&] {
            Settle();
            return window->Frame() != before;
        }));
    }
    void Enter(const Panel* panel, const std::string& text) override
    {
        auto* edit = In<QLineEdit>(panel);
        edit->selectAll();
        edit->insert(QString::fromStdString(text).chopped(1));
        QTest::keyClicks(edit, QString::fromStdString(text).right(1));
        QTest::keyClick(edit, Qt::Key_Tab);
    }
    void Check(const Panel* panel, bool on) override
    {
        auto* box = In<QCheckBox>(panel);
        if (box->isChecked() != on)
            QTest::keyClick(box, Qt::Key_Space);
    }
    void Press(const Panel* panel) override { QTest::mouseClick(In<QPushButton>(panel), Qt::LeftButton); }
    void Close(const BWindow* window) override { PeerOf(window)->close(); }

    Diary Headless(const std::function<void(Hands&, Diary&)>& tell)
    {
        vetch::HeadlessDisplay headless;
        vetch::SetDisplay(&headless);
        HeadlessHands hands(headless);
        Diary diary;
        tell(hands, diary);
        QuitAll();
        vetch::SetDisplay(&display);
        return diary;
    }
    Diary Desktop(const std::function<void(Hands&, Diary&)>& tell)
    {
        Diary diary;
        tell(*this, diary);
        return diary;
    }

    TestBundle bundle;

private:
    using Mouse = void (*)(QWidget*, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int);
    static void Click(const BWindow* window, int index, Mouse mouse)
    {
        const auto* list = In<QListView>(window);
        mouse(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(index, 0)).center(), -1);
    }
};

TEST_F(BothDisplays, AgreeOnAList)
{
    const Diary headless = Headless(TellOfResults);
    EXPECT_EQ(Desktop(TellOfResults), headless);
    EXPECT_EQ(headless,
              (Diary{"selected 4", "frame 100 100 200 220", "inactive", "look at 1", "size 100 120", "asked to quit"}));
}

TEST_F(BothDisplays, AgreeOnControls)
{
    const auto tell = [this](Hands& hands, Diary& diary) { TellOfControls(hands, diary, bundle); };
    const Diary headless = Headless(tell);
    EXPECT_EQ(Desktop(tell), headless);
    EXPECT_EQ(headless, (Diary{"active", "entered größer *.cpp 14-14 on", "checked größer *.cpp 14-14 off",
                               "checked größer *.cpp 14-14 on", "pressed größer *.cpp 14-14 on", "asked to quit"}));
}

} // namespace
