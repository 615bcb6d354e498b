#include "vetch/interface/BWindow.h"

#include "Desk.h"
#include "tests/support/RefusedThreads.h"
#include "vetch/interface/Carbon.h"

#include <atomic>
#include <thread>

namespace {

using Window = Desk;

// Makes windows on a thread of its own, and does with them what it is told to.
class Foreigner : public BLooper {
public:
    std::function<void()> task;

    void MessageReceived(BMessage* message) override
    {
        if (message->what == FourCC("task"))
            task();
        else
            BLooper::MessageReceived(message);
    }
    // Has 'work' done over there, and waits for quiet.
    void Do(std::function<void()> work)
    {
        task = std::move(work);
        PostMessage(FourCC("task"));
        vetch::Settle();
    }
};

TEST_F(Window, ShowAndHideAreIdempotent)
{
    auto* window = new ListWindow;
    EXPECT_TRUE(window->IsHidden());
    EXPECT_FALSE(Only().visible);
    window->Hide();
    window->Show();
    window->Show();
    EXPECT_FALSE(window->IsHidden());
    EXPECT_TRUE(Only().visible);
    window->Hide();
    window->Hide();
    EXPECT_FALSE(Only().visible);
    window->Show();
    EXPECT_EQ(diary.lines, Lines({"show 1", "hide 1", "show 1"}));
}

TEST_F(Window, TheFirstShowStartsItsThread)
{
    auto* window = new ListWindow;
    window->list->SetTarget(window);
    window->PostMessage(ListWindow::kLook);
    vetch::Settle();
    EXPECT_TRUE(window->looks.empty());
    std::thread::id looker;
    window->looked = [&looker] { looker = std::this_thread::get_id(); };
    window->Show();
    vetch::Settle();
    EXPECT_EQ(window->looks.size(), 1u);
    EXPECT_NE(looker, std::this_thread::get_id());
}

// Whoever shows it looks no more: a window that nobody sees and nobody closes would stay for ever.
TEST_F(Window, AWindowWithoutAThreadIsQuitAndDestroyedLater)
{
    Complaints complaints;
    const RefusedThreads refused;
    bool isGone = false;
    struct Witnessed : ListWindow {
        explicit Witnessed(bool& isGone) : isGone(isGone) {}
        ~Witnessed() override { isGone = true; }
        bool& isGone;
    };
    auto* window = new Witnessed(isGone);
    {
        const vetch::PluginCall call;
        window->Show();
        EXPECT_FALSE(isGone) << "the plug-in may still look at it";
        EXPECT_TRUE(window->IsHidden());
        EXPECT_FALSE(window->HasRun());
        EXPECT_EQ(window->PostMessage(FourCC("ping")), B_ERROR);
        window->Show();
        EXPECT_TRUE(diary.lines.empty()) << "the display was asked to show it";
    }
    vetch::RunPending();
    EXPECT_TRUE(isGone);
    EXPECT_EQ(complaints.Take(), std::vector<std::string>{NoThreadsFor("a window is not shown")});
}

TEST_F(Window, AWindowWithoutAThreadMayBeQuitAtOnce)
{
    const Complaints complaints;
    const RefusedThreads refused;
    auto* window = new ListWindow;
    const vetch::LooperToken token = window->LooperToken();
    window->Show();
    window->Quit();
    EXPECT_EQ(vetch::FindLooper(token), nullptr);
    vetch::RunPending(); // which finds nothing left to do
}

TEST_F(Window, AWindowOfAnotherThreadWithoutAThreadIsDestroyedHere)
{
    const Complaints complaints;
    auto* foreigner = new Foreigner;
    foreigner->Run();
    vetch::LooperToken token = 0;
    {
        const RefusedThreads refused;
        foreigner->Do([&token] {
            auto* window = new ListWindow;
            token = window->LooperToken();
            window->Show();
        });
    }
    vetch::Settle();
    EXPECT_NE(token, 0u);
    EXPECT_EQ(vetch::FindLooper(token), nullptr);
    foreigner->Quit();
}

TEST_F(Window, AWindowServedByTheApplicationHasNoThread)
{
    class Preferences : public BWindow {
    public:
        Preferences() : BWindow({}, "", 1, 1, 0, vetch::Service::Application) {}
        void MessageReceived(BMessage*) override { thread = std::this_thread::get_id(); }
        std::thread::id thread;
    };
    auto* window = new Preferences;
    window->Show();
    window->PostMessage(FourCC("ping"));
    vetch::Settle();
    EXPECT_EQ(window->thread, std::this_thread::get_id());
}

TEST_F(Window, ConcurrentQuitsDestroyItOnceOnTheDocumentThread)
{
    std::atomic<int> deaths = 0;
    const auto document = std::this_thread::get_id();
    const auto make = [&deaths, document] {
        auto* window = new ListWindow;
        window->died = [&deaths, document] {
            EXPECT_EQ(std::this_thread::get_id(), document);
            ++deaths;
        };
        return window;
    };
    auto* foreigner = new Foreigner;
    foreigner->Run();
    struct {
        const char* why;
        std::function<void()> quit;
    } const cases[] = {
        {"the document thread",
         [&] {
             auto* window = make();
             window->Show();
             window->Quit();
         }},
        {"the user",
         [&] {
             make()->Show();
             EXPECT_TRUE(display.Close(display.Windows().front().number));
         }},
        {"its own thread",
         [&] {
             auto* window = make();
             window->looked = [window] { window->Quit(); };
             window->Show();
             window->PostMessage(ListWindow::kLook);
         }},
        {"a message, twice",
         [&] {
             auto* window = make();
             window->Show();
             window->PostMessage(B_QUIT_REQUESTED);
             window->PostMessage(B_QUIT_REQUESTED);
         }},
        {"another looper's thread",
         [&] {
             auto* window = make();
             window->Show();
             foreigner->Do([window] { window->Quit(); });
         }},
        {"the thread that made it and never showed it", [&] { foreigner->Do([&make] { make()->Quit(); }); }},
        {"the document thread, never shown", [&] { make()->Quit(); }},
        {"the document thread, before the thread that made it shows it",
         [&] {
             ListWindow* window = nullptr;
             foreigner->Do([&] { window = make(); });
             window->Quit();
             foreigner->Do([window] { window->Show(); });
         }},
    };
    int expected = 0;
    for (const auto& c : cases) {
        c.quit();
        vetch::Settle();
        EXPECT_EQ(deaths, ++expected) << c.why;
        EXPECT_TRUE(display.Windows().empty()) << c.why;
    }
}

TEST_F(Window, AWindowThatWasQuitIsClosedOnceAndNotHidden)
{
    auto* window = new ListWindow;
    window->Show();
    window->Quit();
    EXPECT_EQ(diary.lines, Lines({"show 1", "close 1"}));
}

TEST_F(Window, AWindowThatWasNeverShownClosesUnnoticed)
{
    (new ListWindow)->Quit();
    delete new ListWindow;
    EXPECT_TRUE(diary.lines.empty());
    EXPECT_TRUE(display.Windows().empty());
}

TEST_F(Window, AHiddenWindowIsClosedWhenItIsQuit)
{
    auto* window = new ListWindow;
    window->Show();
    window->Hide();
    window->Quit();
    EXPECT_EQ(diary.lines, Lines({"show 1", "hide 1", "close 1"}));
}

TEST_F(Window, QuitRemovesItAtOnceAndForGood)
{
    auto* window = new ListWindow;
    window->looked = [&] {
        window->Quit();
        EXPECT_TRUE(display.Windows().empty());
        window->Hide();
        window->Show();
        window->MoveTo(1, 1);
        window->Add("late");
    };
    window->Show();
    window->PostMessage(ListWindow::kLook);
    vetch::Settle();
    EXPECT_EQ(diary.lines, Lines({"show 1", "close 1"}));
}

TEST_F(Window, AWindowThatWasQuitBeforeItsFirstShowNeverAppears)
{
    auto* foreigner = new Foreigner;
    foreigner->Run();
    ListWindow* window = nullptr;
    foreigner->Do([&window] { window = new ListWindow; });
    window->Quit();
    foreigner->Do([&window] { window->Show(); });
    EXPECT_TRUE(diary.lines.empty());
    EXPECT_TRUE(display.Windows().empty());
}

TEST_F(Window, OnlyAVisibleWindowReportsMoves)
{
    auto* window = new ListWindow;
    window->MoveTo(5, 6);
    window->Show();
    window->MoveTo(7, 8);
    window->MoveTo(7, 8);
    window->ResizeTo(50, 60);
    window->Hide();
    window->MoveTo(9, 10);
    EXPECT_EQ(diary.lines, Lines({"show 1", "move 1", "move 1", "hide 1"}));
    EXPECT_EQ(Only().frame, (BRect{9, 10, 59, 70}));
}

struct ResizeCase {
    const char* why;
    float limits[4];
    float width, height;
    float thenWidth, thenHeight;
};

TEST_F(Window, TheUserResizesItWithinTheLimits)
{
    const ResizeCase cases[] = {
        {"within", {100, 500, 50, 400}, 200, 150, 200, 150},
        {"too small", {100, 500, 50, 400}, 20, 15, 100, 50},
        {"too large", {100, 500, 50, 400}, 2000, 1500, 500, 400},
        {"where the limits contradict each other the minimum wins", {100, 60, 80, 30}, 70, 40, 100, 80},
    };
    for (const ResizeCase& c : cases) {
        auto* window = new ListWindow;
        window->SetSizeLimits(c.limits[0], c.limits[1], c.limits[2], c.limits[3]);
        window->Show();
        EXPECT_TRUE(display.ResizeByUser(Only().number, c.width, c.height));
        vetch::Settle();
        const BRect expected{100, 100, 100 + c.thenWidth, 100 + c.thenHeight};
        EXPECT_EQ(Only().frame, expected) << c.why;
        EXPECT_EQ(window->Frame(), expected) << c.why;
        EXPECT_EQ(window->list->Parent()->Bounds(), window->Bounds()) << c.why;
        window->Quit();
    }
}

TEST_F(Window, IsNotifiedOnceOfItsNewFrame)
{
    class Listener : public BWindow {
    public:
        Listener() : BWindow({0, 0, 100, 100}, "", 1, 1, 0) {}
        void FrameMoved(BPoint origin) override { heard.push_back("moved " + std::to_string(int(origin.x))); }
        void FrameResized(float width, float) override { heard.push_back("resized " + std::to_string(int(width))); }
        std::vector<std::string> heard;
    };
    auto* window = new Listener;
    window->MoveTo(5, 5);
    window->MoveTo(5, 5);
    window->ResizeTo(50, 50);
    window->Zoom({1, 2}, 30, 40);
    EXPECT_EQ(window->heard, Lines({"moved 5", "resized 50", "resized 30", "moved 1"}));
    EXPECT_EQ(window->Frame(), (BRect{1, 2, 31, 42}));
    window->Quit();
}

TEST_F(Window, ShowingADialogTakesTheFocusFromAnother)
{
    class Dialog : public BWindow {
    public:
        Dialog() : BWindow({}, "", 1, 1, 0) {}
        void WindowActivated(bool active) override { activations.push_back(active); }
        std::vector<bool> activations;
    };
    auto* first = new Dialog;
    auto* second = new Dialog;
    first->Show();
    vetch::Settle();
    EXPECT_TRUE(first->IsActive());
    second->Show();
    vetch::Settle();
    EXPECT_FALSE(first->IsActive());
    EXPECT_TRUE(second->IsActive());
    ASSERT_TRUE(first->Lock());
    first->Activate(true);
    first->Activate(true);
    first->Unlock();
    vetch::Settle();
    EXPECT_TRUE(first->IsActive());
    EXPECT_FALSE(second->IsActive());
    ASSERT_TRUE(first->Lock());
    first->Hide();
    EXPECT_FALSE(first->IsActive());
    first->Unlock();
    EXPECT_EQ(first->activations, (std::vector<bool>{true, false, true, false}));
    EXPECT_EQ(second->activations, (std::vector<bool>{true, false}));
}

TEST_F(Window, AWindowHiddenBeforeItsActivationDoesNotTakeTheFocus)
{
    auto* dialog = new ListWindow(0);
    ASSERT_TRUE(dialog->Lock());
    dialog->Show();
    dialog->Hide();
    dialog->Unlock();
    vetch::Settle();
    EXPECT_FALSE(dialog->IsActive());
    EXPECT_FALSE(Only().active);
}

TEST_F(Window, WitnessesMayInspectTheWindow)
{
    class Onlooker : public vetch::DisplayObserver {
    public:
        vetch::HeadlessDisplay* display = nullptr;
        std::vector<bool> visible;
        size_t leftAtClose = 99;

        void WindowShown(long) override { visible.push_back(display->Windows()[0].visible); }
        void WindowHidden(long) override { visible.push_back(display->Windows()[0].visible); }
        void WindowClosed(long) override { leftAtClose = display->Windows().size(); }
    };
    Onlooker onlooker;
    vetch::HeadlessDisplay other(&onlooker);
    onlooker.display = &other;
    vetch::SetDisplay(&other);
    auto* window = new ListWindow;
    window->Show();
    window->Hide();
    window->Quit();
    vetch::SetDisplay(&display);
    EXPECT_EQ(onlooker.visible, (std::vector<bool>{true, false}));
    EXPECT_EQ(onlooker.leftAtClose, 0u);
}

TEST_F(Window, AWindowThatAvoidsTheFocusNeverTakesIt)
{
    auto* dialog = new ListWindow(0);
    dialog->Show();
    vetch::Settle();
    auto* palette = new ListWindow(B_AVOID_FOCUS);
    palette->Refill(1);
    palette->Show();
    palette->Activate(true);
    display.ClickItem(2, 0);
    vetch::Settle();
    EXPECT_FALSE(palette->IsActive());
    EXPECT_TRUE(dialog->IsActive());
}

TEST_F(Window, HasOneFocusViewAtMost)
{
    auto* window = new ListWindow;
    auto* other = new BView;
    other->MakeFocus();
    window->AddChild(other);
    EXPECT_EQ(window->FocusView(), nullptr) << "a view outside a window has no focus to take";
    window->list->MakeFocus();
    EXPECT_TRUE(Only().list->focus);
    other->MakeFocus();
    EXPECT_EQ(window->FocusView(), other);
    EXPECT_FALSE(Only().list->focus);
    window->list->MakeFocus(false);
    EXPECT_EQ(window->FocusView(), other);
    other->MakeFocus(false);
    EXPECT_EQ(window->FocusView(), nullptr);
    window->Quit();
}

TEST_F(Window, TheHostsWindowsAreNeitherNumberedNorListed)
{
    auto* document =
        new BWindow({40, 60, 740, 660}, "main.cpp", 1, 1, 0, vetch::Service::Application, vetch::ShownBy::Host);
    document->AddChild(new BListView({}, "list", 0, 0, 0));
    document->Show();
    document->MoveTo(1, 1);
    document->Activate(true);
    EXPECT_TRUE(document->IsActive());
    auto* palette = new ListWindow;
    EXPECT_EQ(Only().number, 1);
    EXPECT_EQ(Only().token, palette->LooperToken());
    document->Quit();
    EXPECT_TRUE(diary.lines.empty());
    palette->Quit();
}

TEST_F(Window, NumbersAreNeverUsedAgain)
{
    (new ListWindow)->Quit();
    auto* second = new ListWindow;
    auto* third = new ListWindow;
    EXPECT_EQ(display.Windows().front().number, 2);
    EXPECT_EQ(display.Windows().back().number, 3);
    second->Quit();
    EXPECT_EQ(Only().number, 3);
    third->Quit();
}

TEST_F(Window, KnowsItsTitleAndWhereItIs)
{
    auto* window = new BWindow({100, 50, 200, 150}, nullptr, 1, 1, 0);
    EXPECT_EQ(window->Title(), "");
    window->SetTitle("Declaration");
    EXPECT_EQ(window->Title(), "Declaration");
    EXPECT_EQ(Only().title, "Declaration");
    EXPECT_EQ(window->ConvertToScreen({8, 20}), (BPoint{108, 70}));
    EXPECT_FALSE(window->IsShowingSheet());
    window->SetShowingSheet(true);
    EXPECT_TRUE(window->IsShowingSheet());
    window->Quit();
}

TEST_F(Window, EachThreadHasItsOwnDrawingPort)
{
    auto* window = new ListWindow;
    const GrafPtr port = GetWindowPort(window->NativeWindow());
    GrafPtr current = port;
    GetPort(&current);
    EXPECT_EQ(current, nullptr);
    SetPort(port);
    std::thread([] {
        GrafPtr here = nullptr;
        GetPort(&here);
        EXPECT_EQ(here, nullptr);
        SetPort(reinterpret_cast<GrafPtr>(&here));
    }).join();
    GetPort(&current);
    EXPECT_EQ(current, port);
    EXPECT_NE(current, nullptr);
    SetPort(nullptr);
    window->Quit();
}

} // namespace
