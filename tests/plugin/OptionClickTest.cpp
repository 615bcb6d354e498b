#include "plugin/OptionClick.h"

#include "plugin/Activation.h"
#include "tests/plugin/PluginTest.h"
#include "vetch/interface/BWindow.h"

namespace {

const uint32 kShift = B_SHIFT_KEY;
const uint32 kCommand = B_COMMAND_KEY;
const uint32 kControl = B_CONTROL_KEY;
const uint32 kOption = B_OPTION_KEY;
const uint32 kCaps = B_CAPS_LOCK;

class OptionClick : public PluginTest {
protected:
    OptionClick()
    {
        UseSomeTags();
        host.SetMarked("draw|");
        host.mouse = {10, 10};
        vetch::SetModifiers(kOption);
    }

    // Event 203, which either opens the declaration of "draw" and is used up, or does nothing.
    bool LooksUp(const std::string& why)
    {
        const long result = Send(203);
        const Opened opened = std::exchange(framework.application->opened, {});
        const Calls log = TakeLog();
        EXPECT_EQ(gJustActivatedWindow, nullptr) << why;
        EXPECT_EQ(opened.empty(), result == 0) << why;
        EXPECT_EQ(log, result == 0 ? Calls{} : Calls{"CommandDone 0"}) << why;
        EXPECT_TRUE(result == 0 || result == 2) << why;
        return result == 2;
    }
};

TEST_F(OptionClick, LooksUpTheWordUnderTheMouse)
{
    host.SetMarked("|x = draw();");
    host.mouse = {7 * 6, 10};
    EXPECT_EQ(Send(203), 2);
    EXPECT_EQ(framework.application->opened, (Opened{{Source("view.h"), 12}}));
    EXPECT_EQ(host.log, Calls{"CommandDone 0"});
}

TEST_F(OptionClick, FindsTheDefinitionWithControl)
{
    vetch::SetModifiers(kControl | kOption);
    EXPECT_EQ(Send(203), 2);
    EXPECT_EQ(framework.application->opened, (Opened{{Source("view.cpp"), 34}}));
}

TEST_F(OptionClick, IsUsedUpEvenWithoutAWord)
{
    host.SetMarked("( |  )");
    host.mouse = {14, 10};
    EXPECT_EQ(Send(203), 2);
    EXPECT_EQ(host.log, Calls{"CommandDone 0"});
    EXPECT_EQ(framework.display.Beeps(), 0);
    EXPECT_TRUE(Open().empty());
}

struct Keys {
    const char* why;
    uint32 held;
    const char* declarations; // the two settings
    const char* definitions;
    bool looksUp;
};

const Keys kKeys[] = {
    {"option", kOption, "on", "on", true},
    {"option, control's setting off", kOption, "on", "off", true},
    {"option, its setting off: not the other's", kOption, "off", "on", false},
    {"control and option", kControl | kOption, "on", "on", true},
    {"control and option, option's setting off", kControl | kOption, "off", "on", true},
    {"control and option, its setting off: not the other's", kControl | kOption, "on", "off", false},
    {"nothing held", 0, "on", "on", false},
    {"control alone", kControl, "on", "on", false},
    {"shift and option", kShift | kOption, "on", "on", false},
    {"command and option", kCommand | kOption, "on", "on", false},
    {"shift, control and option", kShift | kControl | kOption, "on", "on", false},
    {"caps lock does not count", kCaps | kOption, "on", "on", true},
    {"both settings off", kOption, "off", "off", false},
};

TEST_F(OptionClick, NeedsExactlyItsModifiersAndItsSetting)
{
    for (const Keys& row : kKeys) {
        vetch::SetModifiers(row.held);
        Set("DeclOptionClickToFindDeclaration", row.declarations);
        Set("DeclCtrlOptionClickToFindDefinition", row.definitions);
        EXPECT_EQ(LooksUp(row.why), row.looksUp) << row.why;
    }
}

TEST_F(OptionClick, NeedsTheFirstButton)
{
    for (const uint32 buttons : {0u, 1u, 2u, 3u, 4u, 5u}) {
        host.mouseButtons = buttons;
        EXPECT_EQ(LooksUp(std::to_string(buttons)), buttons == 1) << buttons;
    }
}

struct Where {
    const char* why;
    BPoint mouse;
    bool inside;
};

const Where kPlaces[] = {
    {"inside", {350, 300}, true},     {"left edge", {0, 300}, true},     {"top edge", {350, 0}, true},
    {"right edge", {700, 300}, true}, {"bottom edge", {350, 600}, true}, {"a corner", {700, 600}, true},
    {"left of it", {-1, 300}, false}, {"above it", {350, -1}, false},    {"right of it", {701, 300}, false},
    {"below it", {350, 601}, false},
};

TEST_F(OptionClick, WorksInsideTheTextAndOnItsEdges)
{
    host.SetMarked(std::string(100, ' ') + "|");
    host.text = "draw";
    for (int i = 0; i < 200; ++i)
        host.text += ",draw";
    for (const Where& row : kPlaces) {
        host.mouse = row.mouse;
        EXPECT_EQ(LooksUp(row.why), row.inside) << row.why;
    }
}

TEST_F(OptionClick, NeedsAnActiveWindow)
{
    window->Activate(false);
    EXPECT_FALSE(LooksUp("inactive"));
    window->Activate(true);
    EXPECT_TRUE(LooksUp("active"));
    host.window = nullptr;
    EXPECT_FALSE(LooksUp("no window"));
}

struct After {
    const char* why;
    bigtime_t microseconds;
    bool looksUp;
};

const After kAfter[] = {
    {"at once", 0, false},
    {"the last moment", 100000, false},
    {"just after it", 100001, true},
    {"much later", 5000000, true},
};

TEST_F(OptionClick, TheClickThatActivatesAWindowLooksNothingUp)
{
    for (const After& row : kAfter) {
        Send(300);
        vetch::AdvanceVirtualClock(row.microseconds);
        EXPECT_EQ(LooksUp(row.why), row.looksUp) << row.why;
        // The refused click was the one that activated the window; the next is meant.
        EXPECT_TRUE(LooksUp(row.why)) << row.why;
    }
}

TEST_F(OptionClick, TheActivationOfAnotherWindowDoesNotMatter)
{
    BWindow* const mine = host.window;
    BWindow other({0, 0, 10, 10}, "other", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0, vetch::Service::Application,
                  vetch::ShownBy::Host);
    host.window = &other;
    Send(300);
    host.window = mine;
    EXPECT_TRUE(LooksUp("another window was activated"));
}

TEST_F(OptionClick, APlainClickClosesPalettes)
{
    vetch::SetModifiers(0);
    OpenResults();
    EXPECT_EQ(Send(203), 0);
    EXPECT_FALSE(ResultsAreOpen());
}

} // namespace
