#include "vetch/app/BInvoker.h"

#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/BMessenger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class View : public BHandler {
public:
    explicit View(Log& log) : log(log) {}
    void MessageReceived(BMessage* message) override { log.Add("view " + std::to_string(message->what)); }

private:
    Log& log;
};

class BInvokerTest : public testing::Test {
protected:
    BInvokerTest() { looper->Run(); }
    ~BInvokerTest() override { looper->Quit(); }

    std::vector<std::string> Settled()
    {
        vetch::Settle();
        return log.Lines();
    }

    Log log;
    BApplication application;
    TestLooper* looper = new TestLooper("looper", log);
    BInvoker invoker;
};

TEST_F(BInvokerTest, PostsACopyOfItsMessageEachTime)
{
    invoker.SetMessage(new BMessage(1));
    invoker.SetTarget(nullptr, looper);
    EXPECT_EQ(invoker.Invoke(), B_OK);
    EXPECT_EQ(invoker.Invoke(), B_OK);
    EXPECT_EQ(invoker.Message()->what, 1u);
    EXPECT_THAT(Settled(), ElementsAre("looper 1", "looper 1"));
}

TEST_F(BInvokerTest, PostsAnotherMessageOnRequest)
{
    invoker.SetMessage(new BMessage(1));
    invoker.SetTarget(looper);
    const BMessage other(2);
    EXPECT_EQ(invoker.Invoke(&other), B_OK);
    EXPECT_THAT(Settled(), ElementsAre("looper 2"));
}

TEST_F(BInvokerTest, PostsToAHandlerOfALooper)
{
    View view(log);
    view.SetLooper(looper);
    invoker.SetMessage(new BMessage(1));
    invoker.SetTarget(&view, looper);
    EXPECT_EQ(invoker.Invoke(), B_OK);
    EXPECT_THAT(Settled(), ElementsAre("view 1"));
}

TEST_F(BInvokerTest, DoesNothingWithoutAMessageOrALiveTarget)
{
    invoker.SetTarget(looper);
    EXPECT_EQ(invoker.Invoke(), B_ERROR) << "no message";
    invoker.SetMessage(new BMessage(1));
    invoker.SetMessage(nullptr);
    EXPECT_EQ(invoker.Message(), nullptr);
    EXPECT_EQ(invoker.Invoke(), B_ERROR) << "its message was removed";
    invoker.SetMessage(new BMessage(1));
    invoker.SetTarget(nullptr);
    EXPECT_EQ(invoker.Invoke(), B_ERROR) << "no target";
    {
        View view(log);
        invoker.SetTarget(&view);
        EXPECT_EQ(invoker.Invoke(), B_ERROR) << "the target belongs to no looper";
        view.SetLooper(looper);
        EXPECT_EQ(invoker.Invoke(), B_OK);
        EXPECT_THAT(Settled(), ElementsAre("view 1"));
    }
    EXPECT_EQ(invoker.Invoke(), B_ERROR) << "the target is dead";
}

TEST_F(BInvokerTest, AMessengerReachesLiveHandlersOnly)
{
    auto* mortal = new TestLooper("mortal", log);
    mortal->Run();
    const BMessenger toMortal(mortal);
    const BMessenger copy = toMortal;
    const BMessage message(1);
    EXPECT_EQ(copy.SendMessage(&message), B_OK);
    EXPECT_THAT(Settled(), ElementsAre("mortal 1"));
    EXPECT_EQ(toMortal.SendMessage(nullptr), B_ERROR);
    mortal->Quit();
    EXPECT_EQ(toMortal.SendMessage(&message), B_ERROR);
    EXPECT_EQ(BMessenger(nullptr).SendMessage(&message), B_ERROR);
}

TEST_F(BInvokerTest, AMessengerReachesTheApplication)
{
    class Application : public BHandler {
    public:
        void MessageReceived(BMessage* message) override { received = message->what; }
        uint32 received = 0;
    } handler;
    handler.SetLooper(&application);
    const BMessage message(7);
    EXPECT_EQ(BMessenger(&handler).SendMessage(&message), B_OK);
    EXPECT_EQ(handler.received, 0u);
    vetch::RunPending();
    EXPECT_EQ(handler.received, 7u);
}

} // namespace
