#include "windows/TagWindow.h"

#include "tags/Tags.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "vetch/interface/BListItem.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>

namespace {

std::atomic<int> gItems = 0; // alive

class CountedItem : public BStringItem {
public:
    explicit CountedItem(const std::string& text) : BStringItem(text.c_str()) { ++gItems; }
    ~CountedItem() override { --gItems; }
};

struct Populator {
    std::vector<std::string> texts;

    void Populate(Tags&, BListView* into)
    {
        for (const std::string& text : texts)
            into->AddItem(new CountedItem(text));
    }
};

class ListWindow : public TagWindow<Tags> {
public:
    explicit ListWindow(bool resizable) : TagWindow("Some title", resizable, FourCC("Test")) {}
    using TagWindow::List;

    bool Fill(std::vector<std::string> texts)
    {
        Populator populator{std::move(texts)};
        Tags tags(nullptr, nullptr, "", false);
        return PopulateList(populator, tags, &Populator::Populate);
    }
    void MessageReceived(BMessage* message) override
    {
        int32 index = -1;
        message->FindInt32("index", &index);
        if (message->what == FourCC("Test"))
            invoked.push_back(index);
        else
            TagWindow::MessageReceived(message);
    }
    std::vector<int32> invoked;
};

class TagWindowTest : public testing::Test {
protected:
    Framework framework;
    FakeHost host{"some text|"};

    vetch::HeadlessDisplay::WindowState Seen() const { return framework.Windows().at(0); }
    std::array<float, 4> Limits() const { return Seen().limits; }
};

std::vector<std::string> Entries(size_t count, const std::string& text)
{
    return std::vector<std::string>(count, text);
}

TEST_F(TagWindowTest, IsCreatedHiddenAndNeverActivates)
{
    new ListWindow(true);
    new ListWindow(false);
    const auto windows = framework.Windows();
    ASSERT_EQ(windows.size(), 2u);
    EXPECT_EQ(windows[0].look, 6);
    EXPECT_EQ(windows[1].look, 3);
    for (const auto& window : windows) {
        EXPECT_EQ(window.title, "Some title");
        EXPECT_EQ(window.flags, 0x200u);
        EXPECT_EQ(window.frame, (BRect{100, 100, 400, 200}));
        EXPECT_FALSE(window.visible);
        ASSERT_TRUE(window.list);
        EXPECT_TRUE(window.list->focus);
    }
}

struct Fit {
    const char* why;
    bool resizable;
    std::vector<std::string> texts;
    float width, height;
    std::array<float, 4> limits; // least and greatest width, least and greatest height
};

// A character is 7 wide and a line 10 + 3 + 1 high, and one more; the scroll bar is 11 wide.
const Fit kFits[] = {
    {"one entry", false, {"abc"}, 31, 18, {50, 31, 48, 18}},
    {"one entry, resizable", true, {"abc"}, 42, 18, {100, 42, 48, 18}},
    {"the widest decides, wherever it stands", false, {"a", "abcdefgh", "abc"}, 66, 48, {50, 66, 48, 48}},
    {"a character is no byte", false, {"\xc3\xa9\xc3\xa9"}, 24, 18, {50, 24, 48, 18}},
    {"eight entries", false, Entries(8, "abc"), 31, 123, {50, 31, 48, 123}},
    {"nine entries", false, Entries(9, "abc"), 42, 123, {50, 42, 48, 138}},
    {"nine entries, resizable", true, Entries(9, "abc"), 42, 123, {100, 42, 48, 138}},
};

TEST_F(TagWindowTest, FitsItsEntries)
{
    for (const Fit& row : kFits) {
        auto* window = new ListWindow(row.resizable);
        EXPECT_TRUE(window->Fill(row.texts)) << row.why;
        EXPECT_EQ(Seen().frame.Width(), row.width) << row.why;
        EXPECT_EQ(Seen().frame.Height(), row.height) << row.why;
        EXPECT_EQ(Limits(), row.limits) << row.why;
        window->Quit();
    }
}

TEST_F(TagWindowTest, FitsAnEmptyListOnRequest)
{
    auto* window = new ListWindow(false);
    window->FitList();
    EXPECT_EQ(Seen().frame, (BRect{100, 100, 110, 103}));
    EXPECT_EQ(Limits(), (std::array<float, 4>{50, 10, 48, 3}));
}

TEST_F(TagWindowTest, FillingNeverShowsIt)
{
    auto* window = new ListWindow(false);
    window->Fill({"one", "two"});
    framework.Settle();
    EXPECT_FALSE(Seen().visible);
    EXPECT_EQ(Seen().list->items, (std::vector<std::string>{"one", "two"}));
}

TEST_F(TagWindowTest, ARefillReplacesTheEntriesAndDeletesTheOldOnes)
{
    auto* window = new ListWindow(false);
    window->Fill({"one", "two", "three"});
    EXPECT_EQ(gItems, 3);
    window->Fill({"four"});
    EXPECT_EQ(gItems, 1);
    EXPECT_EQ(Seen().list->items, std::vector<std::string>{"four"});
    EXPECT_EQ(Seen().frame, (BRect{100, 100, 138, 118}));
}

TEST_F(TagWindowTest, AnEmptyRefillKeepsTheOldSizeAndLimits)
{
    auto* window = new ListWindow(false);
    window->Fill({"one", "two"});
    const BRect frame = Seen().frame;
    const std::array<float, 4> limits = Limits();
    EXPECT_FALSE(window->Fill({}));
    EXPECT_EQ(Seen().frame, frame);
    EXPECT_EQ(Limits(), limits);
    EXPECT_TRUE(Seen().list->items.empty());
    EXPECT_EQ(gItems, 0);
}

TEST_F(TagWindowTest, AFirstEmptyFillKeepsTheFirstFrame)
{
    auto* window = new ListWindow(true);
    EXPECT_FALSE(window->Fill({}));
    EXPECT_EQ(Seen().frame, (BRect{100, 100, 400, 200}));
}

TEST_F(TagWindowTest, DeletesItsEntriesWhenItDies)
{
    auto* neverShown = new ListWindow(false);
    neverShown->Fill({"one", "two"});
    neverShown->Quit();
    EXPECT_EQ(gItems, 0);

    auto* shown = new ListWindow(false);
    shown->Fill({"one", "two"});
    shown->ShowAt(BPoint{300, 200});
    shown->Quit();
    framework.Settle();
    EXPECT_EQ(gItems, 0);
}

TEST_F(TagWindowTest, IsShownBelowTheCaret)
{
    auto* window = new ListWindow(false);
    window->Fill({"one", "two"});
    window->ShowAt(&host, 4);
    framework.Settle();
    EXPECT_TRUE(Seen().visible);
    EXPECT_FALSE(Seen().active);
    EXPECT_EQ(Seen().frame, (BRect{76, 112, 107, 145}));
}

TEST_F(TagWindowTest, StandsAboveACaretNearTheBottomAndKeepsOffTheRightEdge)
{
    auto* window = new ListWindow(false);
    window->Fill({"one", "two"});
    window->ShowAt(BPoint{1270, 790});
    framework.Settle();
    EXPECT_EQ(Seen().frame, (BRect{1245, 741, 1276, 774}));
}

TEST_F(TagWindowTest, MovesToANewOffsetWithoutChangingItsLeftEdge)
{
    auto* window = new ListWindow(false);
    window->Fill({"one", "two"});
    window->ShowAt(&host, 4);
    window->Fill({"one"});
    window->RepositionAt(&host, 7);
    framework.Settle();
    EXPECT_EQ(Seen().frame, (BRect{76, 112, 107, 130}));
}

TEST_F(TagWindowTest, TheLeftEdgeMovesOnlyAtTheScreensRightEdge)
{
    framework.display.SetScreen({0, 0, 200, 800});
    auto* window = new ListWindow(false);
    window->Fill({"one", "two"});
    window->ShowAt(&host, 4);
    window->Fill({"wider than it"}); // 101 wide, and 124 remain to the right of 76
    window->RepositionAt(&host, 5);
    EXPECT_EQ(Seen().frame.left, 76);
    window->Fill({"much wider than it"}); // 136 wide
    window->RepositionAt(&host, 5);
    framework.Settle();
    EXPECT_EQ(Seen().frame.left, 60);
    EXPECT_EQ(Seen().frame.right, 196);
}

TEST_F(TagWindowTest, ATallListStaysBelowAndRunsOffTheScreen)
{
    framework.display.SetScreen({0, 0, 1280, 150});
    auto* window = new ListWindow(false);
    window->Fill(Entries(8, "abc"));
    window->ShowAt(BPoint{300, 139}); // 139 - 123 - 16 is the screen's very top
    framework.Settle();
    EXPECT_EQ(Seen().frame.top, 155);
}

TEST_F(TagWindowTest, TheUserCannotMakeItLowerThanThreeLines)
{
    auto* window = new ListWindow(true);
    window->Fill({"one"});
    window->ShowAt(BPoint{300, 200});
    framework.Settle();
    ASSERT_TRUE(framework.display.ResizeByUser(Seen().number, 10, 10));
    framework.Settle();
    EXPECT_EQ(Seen().frame, (BRect{300, 216, 400, 264}));
}

TEST_F(TagWindowTest, AnInvokedEntrySendsItsCommandWithTheIndex)
{
    auto* window = new ListWindow(true);
    window->Fill({"one", "two", "three"});
    window->ShowAt(BPoint{300, 200});
    framework.Settle();
    ASSERT_TRUE(framework.display.InvokeItem(Seen().number, 1));
    framework.Settle();
    ASSERT_TRUE(window->Lock());
    EXPECT_EQ(window->invoked, std::vector<int32>{1});
    window->Unlock();
}

TEST_F(TagWindowTest, LeavesAQuitWindowAlone)
{
    auto* window = new ListWindow(true);
    window->Fill({"one", "two"});
    window->ShowAt(BPoint{300, 200});
    framework.Settle();
    const BRect frame = Seen().frame;
    {
        const vetch::PluginCall call; // nothing is destroyed meanwhile
        window->PostMessage(B_QUIT_REQUESTED);
        while (window->Lock()) {
            window->Unlock();
            std::this_thread::yield();
        }
        EXPECT_FALSE(window->Fill({"three"}));
        window->RepositionAt(&host, 4);
        window->ShowAt(BPoint{10, 10});
        EXPECT_EQ(window->Frame(), frame);
        EXPECT_EQ(gItems, 2);
    }
    framework.Settle();
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(gItems, 0);
}

TEST_F(TagWindowTest, MeasuresInItsOwnPortAndRestoresTheOldOne)
{
    auto* window = new ListWindow(false);
    auto* other = new ListWindow(false);
    const GrafPtr before = GetWindowPort(other->NativeWindow());
    SetPort(before);
    GrafPtr port = nullptr;
    {
        const PortSetter setter(window->List());
        GetPort(&port);
        EXPECT_EQ(port, GetWindowPort(window->NativeWindow()));
        EXPECT_NE(port, before);
    }
    GetPort(&port);
    EXPECT_EQ(port, before);
    window->Fill({"one"});
    GetPort(&port);
    EXPECT_EQ(port, before);
    SetPort(nullptr);
}

} // namespace
