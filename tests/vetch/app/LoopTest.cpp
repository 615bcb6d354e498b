#include "vetch/app/Loop.h"

#include "tests/support/CallFunction.h"
#include "tests/support/Gate.h"
#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/Modifiers.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Host : public BApplication {
public:
    explicit Host(Log& log) : log(log) {}
    std::function<void(uint32)> then = [](uint32) {};

    void MessageReceived(BMessage* message) override
    {
        log.Add("host " + std::to_string(message->what));
        then(message->what);
    }

private:
    Log& log;
};

class LoopTest : public testing::Test {
protected:
    ~LoopTest() override { vetch::SetWakeUp({}); }

    Log log;
    Host host{log};
};

TEST_F(LoopTest, OnlyTheThreadThatMadeTheApplicationIsTheDocumentThread)
{
    EXPECT_TRUE(vetch::OnDocumentThread());
    bool elsewhere = true;
    RunOnThread([&] { elsewhere = vetch::OnDocumentThread(); });
    vetch::JoinThreads();
    EXPECT_FALSE(elsewhere);
}

TEST_F(LoopTest, TheApplicationDispatchesOnRequest)
{
    host.PostMessage(1);
    RunOnThread([this] { host.PostMessage(2); });
    vetch::JoinThreads();
    EXPECT_THAT(log.Lines(), IsEmpty());
    vetch::RunPending();
    EXPECT_THAT(log.Lines(), ElementsAre("host 1", "host 2"));
}

TEST_F(LoopTest, RunPendingDispatchesUntilNothingIsLeft)
{
    host.then = [this](uint32 what) {
        if (what < 3)
            host.PostMessage(what + 1);
    };
    host.PostMessage(1);
    vetch::RunPending();
    EXPECT_THAT(log.Lines(), ElementsAre("host 1", "host 2", "host 3"));
}

TEST_F(LoopTest, WindowsThatTheApplicationServesShareItsOrder)
{
    auto* document = new TestLooper("document", log, vetch::Service::Application);
    document->Run();
    document->PostMessage(1);
    host.PostMessage(2);
    document->PostMessage(3);
    vetch::RunPending();
    EXPECT_THAT(log.Lines(), ElementsAre("document 1", "host 2", "document 3"));
    document->Quit();
}

TEST_F(LoopTest, SettleFollowsAMessageAcrossLoopers)
{
    auto* looper = new TestLooper("a", log);
    looper->On(1, [this](BMessage&) { host.PostMessage(2); });
    looper->On(3, [this](BMessage&) { host.PostMessage(4); });
    host.then = [=](uint32 what) {
        if (what == 2)
            looper->PostMessage(3);
        else
            looper->PostMessage(B_QUIT_REQUESTED);
    };
    looper->Run();
    looper->PostMessage(1);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "host 2", "a 3", "host 4", "a accepted", "a destroyed"));
}

TEST_F(LoopTest, SettleDoesNotWaitForLoopersThatNeverRan)
{
    auto* looper = new TestLooper("a", log);
    looper->PostMessage(1);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), IsEmpty());
    looper->Quit();
}

TEST_F(LoopTest, DocumentMessagesWaitForThePluginCallToReturn)
{
    auto* looper = new TestLooper("a", log);
    looper->Run();
    {
        vetch::PluginCall outer;
        {
            vetch::PluginCall inner;
            EXPECT_EQ(vetch::PluginCall::Depth(), 2);
            host.PostMessage(1);
            RunOnThread([=] { looper->Quit(); });
            vetch::JoinThreads();
        }
        vetch::RunPending();
        vetch::Settle();
        EXPECT_EQ(vetch::PluginCall::Depth(), 1);
        EXPECT_THAT(log.Lines(), ElementsAre("a accepted"));
    }
    EXPECT_EQ(vetch::PluginCall::Depth(), 0);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), testing::UnorderedElementsAre("a accepted", "host 1", "a destroyed"));
}

TEST_F(LoopTest, AQuitInsideAPluginCallDestroysAtOnce)
{
    auto* looper = new TestLooper("a", log);
    looper->Run();
    vetch::PluginCall call;
    looper->Quit();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed"));
}

TEST_F(LoopTest, WakesTheHostForMessagesAndEndedLoopers)
{
    std::atomic<int> woken = 0;
    Gate ended;
    auto* looper = new TestLooper("a", log);
    looper->Run();
    vetch::SetWakeUp([&] { ++woken; });
    looper->PostMessage(1);
    vetch::Settle();
    EXPECT_EQ(woken, 0) << "a looper's own messages are not the host's business";
    host.PostMessage(2);
    EXPECT_EQ(woken, 1);
    vetch::SetWakeUp([&] { ended.Open(); });
    looper->PostMessage(B_QUIT_REQUESTED);
    ended.Wait();
    vetch::RunPending();
    EXPECT_EQ(log.Count("a destroyed"), 1u);
}

TEST_F(LoopTest, WakesTheHostAgainWhenAPluginCallKeptItFromRunning)
{
    int woken = 0;
    vetch::SetWakeUp([&] { ++woken; });
    {
        vetch::PluginCall call;
    }
    EXPECT_EQ(woken, 0);
    {
        vetch::PluginCall call;
        host.PostMessage(1);
        vetch::RunPending();
        EXPECT_EQ(woken, 1);
    }
    EXPECT_EQ(woken, 2);
}

TEST_F(LoopTest, EveryThreadSeesTheModifiers)
{
    EXPECT_EQ(modifiers(), 0u);
    vetch::SetModifiers(B_SHIFT_KEY | B_OPTION_KEY);
    uint32 seen = 0;
    RunOnThread([&] { seen = modifiers(); });
    vetch::JoinThreads();
    EXPECT_EQ(seen, 0x41u);
    vetch::SetModifiers(0);
}

} // namespace
