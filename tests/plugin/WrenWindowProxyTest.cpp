#include "plugin/WrenWindowProxy.h"

#include "tests/support/Framework.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

// Overrides everything that the proxy passes on: none of it may be reached through the proxy.
class Target : public BWindow {
public:
    Target()
        : BWindow({0, 0, 100, 50}, "target", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0, vetch::Service::Application)
    {
    }
    std::vector<std::string> reached;

    void Quit() override { reached.push_back("Quit"); }
    void MessageReceived(BMessage*) override { reached.push_back("MessageReceived"); }
    void FrameMoved(BPoint) override { reached.push_back("FrameMoved"); }
    void FrameResized(float, float) override { reached.push_back("FrameResized"); }
    void Zoom(BPoint, float, float) override { reached.push_back("Zoom"); }
    void WindowActivated(bool) override { reached.push_back("WindowActivated"); }
    void Show() override { reached.push_back("Show"); }
    void Hide() override { reached.push_back("Hide"); }
    bool QuitRequested() override
    {
        reached.push_back("QuitRequested");
        return false;
    }
};

class Proxy : public WrenWindowProxy {
public:
    explicit Proxy(BWindow* target) { fTarget = target; }
};

TEST(WrenWindowProxy, HasNoTargetOfItsOwn)
{
    EXPECT_EQ(WrenWindowProxy().Target(), nullptr);
}

TEST(WrenWindowProxy, ForwardsToTheBaseBehaviourAndNotToOverrides)
{
    Framework framework;
    auto* target = new Target;
    Proxy proxy(target);
    EXPECT_EQ(proxy.Target(), target);

    proxy.Show();
    EXPECT_TRUE(framework.Windows().at(0).visible);
    proxy.Hide();
    EXPECT_FALSE(framework.Windows().at(0).visible);
    EXPECT_TRUE(proxy.QuitRequested());
    BMessage message(FourCC("some"));
    proxy.MessageReceived(&message);
    proxy.FrameMoved({1, 2});
    proxy.FrameResized(3, 4);
    proxy.WindowActivated(true);
    EXPECT_TRUE(target->reached.empty());
    proxy.Zoom({5, 6}, 7, 8);
    EXPECT_EQ(target->Frame(), (BRect{5, 6, 12, 14}));
    EXPECT_THAT(target->reached, testing::Not(testing::Contains("Zoom"))); // the window tells itself of its new frame
    proxy.Quit();
    framework.Settle();
    EXPECT_TRUE(framework.Windows().empty());
}

TEST(WrenWindowProxy, DoesNotForwardOtherCalls)
{
    Framework framework;
    auto* target = new Target;
    Proxy proxy(target);
    EXPECT_EQ(proxy.Run(), 0);
    EXPECT_FALSE(target->HasRun());
    proxy.ScreenChanged({0, 0, 10, 10}, B_RGB32);
    proxy.Minimize(true);
    proxy.MenusBeginning();
    proxy.MenusEnded();
    EXPECT_TRUE(target->reached.empty());
    proxy.Quit();
}

} // namespace
