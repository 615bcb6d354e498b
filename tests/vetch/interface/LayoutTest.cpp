#include "vetch/interface/BScrollView.h"

#include "Desk.h"
#include "vetch/interface/BFont.h"
#include "vetch/interface/BScreen.h"
#include "vetch/interface/BScrollBar.h"

namespace {

using Layout = Desk;

struct ScrollCase {
    const char* why;
    bool horizontal;
    bool vertical;
    BRect frame;
};

TEST_F(Layout, AScrollViewIsItsTargetPlusItsScrollBars)
{
    const ScrollCase cases[] = {
        {"no bars: as its target, for borders take no room", false, false, {10, 20, 110, 70}},
        {"a vertical bar at the right", false, true, {10, 20, 121, 70}},
        {"a horizontal bar at the bottom", true, false, {10, 20, 110, 81}},
        {"both", true, true, {10, 20, 121, 81}},
    };
    for (const ScrollCase& c : cases) {
        auto* target = new BView({10, 20, 110, 70}, "target", B_FOLLOW_ALL_SIDES, 0);
        BScrollView scroll("scroll", target, B_FOLLOW_ALL_SIDES, 0, c.horizontal, c.vertical, 1, true);
        EXPECT_EQ(scroll.Frame(), c.frame) << c.why;
        EXPECT_EQ(target->Frame(), (BRect{0, 0, 100, 50})) << c.why;
        EXPECT_EQ(target->Parent(), &scroll) << c.why;
    }
}

TEST_F(Layout, AListWithAScrollBarFillsItsScrollView)
{
    auto* window = new ListWindow;
    EXPECT_EQ(window->list->Parent()->Bounds(), window->Bounds());
    EXPECT_EQ(window->list->Bounds(), (BRect{0, 0, 289, 100}));
    window->Quit();
}

TEST_F(Layout, ViewsThatFollowAllSidesResizeWithTheirWindow)
{
    auto* window = new ListWindow;
    auto* fixed = new BView({5, 5, 25, 25}, "fixed", 0, 0);
    window->AddChild(fixed);
    struct {
        float width, height;
    } const sizes[] = {{350, 180}, {60, 30}, {300, 100}};
    for (const auto& size : sizes) {
        window->ResizeTo(size.width, size.height);
        EXPECT_EQ(window->Frame(), (BRect{100, 100, 100 + size.width, 100 + size.height}));
        EXPECT_EQ(window->list->Parent()->Frame(), (BRect{0, 0, size.width, size.height}));
        EXPECT_EQ(window->list->Frame(), (BRect{0, 0, size.width - 11, size.height}));
        EXPECT_EQ(Only().list->frame, window->list->Frame());
        EXPECT_EQ(fixed->Frame(), (BRect{5, 5, 25, 25}));
    }
    window->Quit();
}

TEST_F(Layout, TheDisplayHasFramesInWindowCoordinates)
{
    auto* window = new BWindow({0, 0, 200, 200}, "", 1, 1, 0);
    auto* outer = new BView({10, 10, 190, 190}, "outer", B_FOLLOW_ALL_SIDES, 0);
    auto* inner = new BView({20, 30, 100, 100}, "inner", B_FOLLOW_ALL_SIDES, 0);
    inner->AddChild(new BListView({1, 2, 50, 60}, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES, 0));
    outer->AddChild(inner);
    window->AddChild(outer);
    EXPECT_EQ(Only().list->frame, (BRect{31, 42, 80, 100}));
    window->ResizeTo(210, 220);
    EXPECT_EQ(Only().list->frame, (BRect{31, 42, 90, 120}));
    window->Quit();
}

TEST_F(Layout, ResizingAWindowFromCodeIgnoresItsLimits)
{
    auto* window = new ListWindow;
    window->SetSizeLimits(100, 200, 80, 60);
    window->ResizeTo(10, 500);
    EXPECT_EQ(window->Bounds(), (BRect{0, 0, 10, 500}));
    EXPECT_EQ(Only().limits, (std::array<float, 4>{100, 200, 80, 60}));
    window->Quit();
}

struct TextCase {
    const char* why;
    const char* text;
    float width;
};

TEST_F(Layout, TextIsAsWideAsItsCharacters)
{
    const TextCase cases[] = {
        {"no text", "", 0},
        {"no pointer", nullptr, 0},
        {"letters", "draw", 28},
        {"two bytes are one character", "\xC3\xA4h", 14},
        {"three bytes", "\xE2\x82\xAC", 7},
        {"four bytes", "\xF0\x9F\x98\x80!", 14},
        {"a stray byte is drawn as one sign", "a\x80z", 21},
        {"a cut sequence: a sign a byte", "\xE2\x82", 14},
        {"an overlong slash", "\xC0\xAF", 14},
        {"an overlong form of three bytes", "\xE0\x80\x80", 21},
        {"a surrogate", "\xED\xA0\x80", 21},
        {"beyond the last code point", "\xF4\x90\x80\x80", 28},
        {"an overlong form of four bytes", "\xF0\x80\x80\x80", 28},
        {"the last code point", "\xF4\x8F\xBF\xBF", 7},
    };
    BView view;
    for (const TextCase& c : cases)
        EXPECT_EQ(view.StringWidth(c.text), c.width) << c.why;
}

TEST_F(Layout, AViewKeepsACopyOfItsFont)
{
    BView view;
    BFont font(*be_plain_font);
    font.SetDrawAntiAliased(true);
    font.SetSize(9);
    view.SetFont(&font);
    font.SetSize(30);
    BFont copy;
    view.GetFont(&copy);
    EXPECT_EQ(copy.Size(), 9);
    EXPECT_TRUE(copy.IsDrawAntiAliased());
    EXPECT_FALSE(be_plain_font->IsDrawAntiAliased());
    font_height height;
    copy.GetHeight(&height);
    EXPECT_EQ(height.ascent + height.descent + height.leading, 14);
}

TEST_F(Layout, TheDisplayDefinesTheScreen)
{
    EXPECT_EQ(BScreen::MaxWindowFrameWithHint({5, 5}), (BRect{0, 0, 1280, 800}));
    display.SetScreen({10, 20, 300, 400});
    EXPECT_EQ(BScreen::MaxWindowFrameWithHint({5, 5}), (BRect{10, 20, 300, 400}));
    EXPECT_EQ(BScrollBar::MiniScrollBarWidth(), 11);
}

} // namespace
