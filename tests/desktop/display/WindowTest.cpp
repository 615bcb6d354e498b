#include "QtDesk.h"

#include "vetch/interface/BScreen.h"

#include <QListView>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <thread>

namespace {

class Window : public QtDesk {
protected:
    template <class Shown>
    Shown* Show(Shown* window)
    {
        window->Show();
        Settle();
        return window;
    }
    DiaryWindow* ShowDialog()
    {
        return Show(new DiaryWindow({50, 60, 350, 160}, "Dialog", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0));
    }
    // What the user's dragging comes to, once the model has answered.
    void Drag(const BWindow* window, QRect frame, const BRect& expected)
    {
        PeerOf(window)->setGeometry(frame);
        EXPECT_TRUE(QTest::qWaitFor([&] {
            Settle();
            return window->Frame() == expected;
        })) << window->Frame().left
            << " " << window->Frame().top << " " << window->Frame().right << " " << window->Frame().bottom;
    }
};

TEST_F(Window, IsHiddenUntilItIsShown)
{
    auto* window = new ResultList;
    Settle();
    ASSERT_NE(PeerOf(window), nullptr);
    EXPECT_FALSE(PeerOf(window)->isVisible());
    Show(window);
    EXPECT_TRUE(PeerOf(window)->isVisible());
    Do(*window, [window] { window->Hide(); });
    EXPECT_FALSE(PeerOf(window)->isVisible());
}

TEST_F(Window, StandsWhereItIsPutWithItsTitle)
{
    ResultList* window = Show(new ResultList(B_FLOATING_WINDOW_LOOK, "größer"));
    EXPECT_EQ(PeerOf(window)->geometry(), QRect(100, 100, 200, 100));
    EXPECT_EQ(PeerOf(window)->windowTitle(), QString::fromUtf8("größer"));
    Do(*window, [window] {
        window->MoveTo(30, 40);
        window->ResizeTo(220, 130);
        window->SetTitle("other");
    });
    EXPECT_EQ(PeerOf(window)->geometry(), QRect(30, 40, 220, 130));
    EXPECT_EQ(PeerOf(window)->windowTitle(), "other");
}

TEST_F(Window, OnlyDialogsTakeTheKeyboard)
{
    const auto* popUp = PeerOf(Show(new ResultList(B_BORDERED_WINDOW_LOOK)));
    EXPECT_EQ(popUp->windowType(), Qt::ToolTip);
    EXPECT_TRUE(popUp->testAttribute(Qt::WA_ShowWithoutActivating));
    const auto* results = PeerOf(Show(new ResultList(B_FLOATING_WINDOW_LOOK)));
    EXPECT_EQ(results->windowType(), Qt::Tool);
    EXPECT_TRUE(results->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_EQ(results->windowFlags() & (Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint | Qt::WindowTitleHint),
              Qt::WindowCloseButtonHint | Qt::WindowTitleHint)
        << "a list is closed, and has no other button";
    const auto* dialog = PeerOf(ShowDialog());
    EXPECT_EQ(dialog->windowType(), Qt::Dialog);
    EXPECT_FALSE(dialog->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(Window, TheHostsOwnWindowsAreNotShown)
{
    auto* window = new BWindow({0, 0, 100, 100}, "document", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0,
                               vetch::Service::Application, vetch::ShownBy::Host);
    window->Show();
    Settle();
    EXPECT_EQ(PeerOf(window), nullptr);
}

TEST_F(Window, UpdatesForWindowsThatAreGoneAreDropped)
{
    ResultList* window = Show(new ResultList);
    const auto token = window->LooperToken();
    const auto list = window->list->Token();
    window->Quit();
    display.Apply(vetch::WindowShown{token});
    display.Apply(vetch::WindowMoved{token, {0, 0, 10, 10}});
    display.Apply(vetch::WindowFocused{token, list});
    display.Apply(vetch::WindowClosed{token});
    display.Apply(vetch::ListItemAdded{list, 0, "late"});
    display.Apply(vetch::ListItemRemoved{list, 7});
    display.Apply(vetch::TextChanged{list, "late"});
    display.Apply(vetch::CheckChanged{list, true});
    display.Apply(vetch::ViewMoved{list, {}});
    vetch::ViewDescription view;
    view.window = token;
    view.view = list;
    display.Apply(vetch::ViewMade{view});
    Settle();
    EXPECT_TRUE(Peers().empty());
}

TEST_F(Window, ClosingItOnlyAsksTheModel)
{
    ResultList* window = Show(new ResultList);
    PeerOf(window)->close();
    Settle();
    EXPECT_EQ(window->diary, std::vector<std::string>{"asked to quit"});
    EXPECT_TRUE(PeerOf(window)->isVisible());
}

TEST_F(Window, TheUserMovesAndResizesItWithinTheLimits)
{
    ResultList* window = Show(new ResultList);
    Do(*window, [window] { window->SetSizeLimits(150, 400, 80, 300); });
    Drag(window, {10, 20, 200, 100}, {10, 20, 210, 120});
    Drag(window, {10, 20, 250, 90}, {10, 20, 260, 110});
    Drag(window, {10, 20, 5000, 5000}, {10, 20, 410, 320});
    EXPECT_EQ(PeerOf(window)->geometry(), QRect(10, 20, 400, 300)); // the model has the last word
    EXPECT_EQ(window->diary, (std::vector<std::string>{"at 10 20", "size 250 90", "size 400 300"}));
}

TEST_F(Window, TheModelMayExceedTheLimitsAndTheMinimumWins)
{
    ResultList* window = Show(new ResultList);
    Do(*window, [window] {
        window->SetSizeLimits(100, 200, 57, 21); // of a list with one line
        window->ResizeTo(200, 21);
    });
    EXPECT_EQ(PeerOf(window)->size(), QSize(200, 21));
    Drag(window, {100, 100, 190, 30}, {100, 100, 290, 157});
}

TEST_F(Window, ChangesByTheModelAreNotPostedBack)
{
    ResultList* window = Show(new ResultList);
    Do(*window, [window] {
        for (int i = 1; i <= 50; ++i)
            window->MoveTo(static_cast<float>(i), static_cast<float>(i));
    });
    const size_t lines = window->diary.size();
    EXPECT_EQ(lines, 50u);
    EXPECT_FALSE(PeerOf(window)->findChild<QTimer*>()->isActive()); // nothing is going to be told
}

TEST_F(Window, ADialogHasOneSize)
{
    const auto* dialog = PeerOf(ShowDialog());
    EXPECT_EQ(dialog->minimumSize(), QSize(300, 100));
    EXPECT_EQ(dialog->maximumSize(), QSize(300, 100));
}

TEST_F(Window, DialogsAreActivatedAndNotified)
{
    DiaryWindow* first = ShowDialog();
    EXPECT_TRUE(first->IsActive());
    DiaryWindow* second = ShowDialog();
    EXPECT_TRUE(second->IsActive());
    EXPECT_FALSE(first->IsActive());
    Do(*first, [first] { first->Activate(true); });
    EXPECT_TRUE(PeerOf(first)->isActiveWindow());
    EXPECT_TRUE(first->IsActive());
    EXPECT_FALSE(second->IsActive());
}

TEST_F(Window, APopUpClosesOnAPressOutsideIt)
{
    QWidget editor;
    editor.show();
    ResultList* popUp = Show(new ResultList(B_BORDERED_WINDOW_LOOK));
    ResultList* results = Show(new ResultList(B_FLOATING_WINDOW_LOOK));
    EXPECT_TRUE(display.IsPopUpVisible());
    QTest::mouseClick(PeerOf(popUp), Qt::LeftButton);
    Settle();
    EXPECT_TRUE(popUp->diary.empty());
    QTest::mouseClick(&editor, Qt::LeftButton);
    Settle();
    EXPECT_EQ(popUp->diary, std::vector<std::string>{"asked to quit"});
    EXPECT_TRUE(results->diary.empty()); // stays beside the document
    Do(*popUp, [popUp] { popUp->Hide(); });
    EXPECT_FALSE(display.IsPopUpVisible());
}

TEST_F(Window, APopUpClosesWhenTheEditorsWindowIsDraggedAway)
{
    QWidget editor;
    display.SetMainWindow(&editor);
    editor.show();
    ResultList* popUp = Show(new ResultList(B_BORDERED_WINDOW_LOOK));
    editor.move(5, 5); // by the program itself
    Settle();
    EXPECT_TRUE(popUp->diary.empty());
    QMoveEvent moved({50, 50}, {5, 5});
    QSpontaneKeyEvent::setSpontaneous(&moved);
    qApp->notify(&editor, &moved);
    Settle();
    EXPECT_EQ(popUp->diary, std::vector<std::string>{"asked to quit"});
    QuitAll();
}

TEST_F(Window, APopUpClosesWhenTheUserGoesToAnotherProgram)
{
    ResultList* popUp = Show(new ResultList(B_BORDERED_WINDOW_LOOK));
    qApp->applicationStateChanged(Qt::ApplicationInactive);
    Settle();
    EXPECT_EQ(popUp->diary, std::vector<std::string>{"asked to quit"});
}

TEST_F(Window, ItsContentCanMoveToAnotherWindow)
{
    auto* panel = new DiaryWindow({0, 0, 200, 120}, "panel", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0,
                                  vetch::Service::Application);
    panel->AddChild(new BListView({10, 10, 100, 60}, "list", B_SINGLE_SELECTION_LIST, 0, 0));
    QPointer<QWidget> content = display.TakeContent(panel->LooperToken());
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(display.TakeContent(panel->LooperToken()), nullptr);
    QWidget dialog;
    (new QVBoxLayout(&dialog))->addWidget(content);
    dialog.show();
    panel->Show();
    Settle();
    EXPECT_FALSE(PeerOf(panel)->isVisible());
    EXPECT_GE(content->width(), 200);
    EXPECT_TRUE(content->findChild<QWidget*>()->isVisible());
    panel->Quit();
    Settle();
    EXPECT_EQ(content, nullptr);
}

TEST_F(Window, ItsContentMayDieFirst)
{
    auto* panel = new DiaryWindow({0, 0, 200, 120}, "panel", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0,
                                  vetch::Service::Application);
    auto* list = new BListView({10, 10, 100, 60}, "list", B_SINGLE_SELECTION_LIST, 0, 0);
    panel->AddChild(list);
    delete display.TakeContent(panel->LooperToken());
    const BStringItem item("late");
    list->AddItem(const_cast<BStringItem*>(&item));
    list->MakeFocus();
    panel->ResizeTo(50, 50);
    panel->AddChild(new BListView({10, 10, 100, 60}, "late", B_SINGLE_SELECTION_LIST, 0, 0));
    Settle();
    EXPECT_NE(PeerOf(panel), nullptr);
    EXPECT_EQ(In<QListView>(panel), nullptr);
}

TEST_F(Window, TheEditorsWindowMayDieFirst)
{
    auto editor = std::make_unique<QWidget>();
    display.SetMainWindow(editor.get());
    ResultList* window = Show(new ResultList);
    EXPECT_EQ(PeerOf(window)->parentWidget(), editor.get());
    editor.reset();
    EXPECT_EQ(PeerOf(window), nullptr);
    Do(*window, [window] {
        window->MoveTo(1, 1);
        window->Fill(3);
    });
    EXPECT_EQ(window->list->CountItems(), 3); // the model lives on
}

TEST_F(Window, EveryThreadKnowsTheScreen)
{
    const QRect usable = QGuiApplication::primaryScreen()->availableGeometry();
    BRect told;
    std::jthread([&told] { told = BScreen::MaxWindowFrameWithHint({10, 10}); }).join();
    EXPECT_EQ(told.right - told.left, usable.width());
    EXPECT_EQ(told.bottom - told.top, usable.height());
    EXPECT_EQ(BScreen::MaxWindowFrameWithHint({-9999, -9999}), told); // the nearest one
}

} // namespace
