#include "tests/support/CallFunction.h"
#include "tests/support/Gate.h"
#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Host : public BApplication {
public:
    explicit Host(Log& log) : log(log) {}
    void MessageReceived(BMessage* message) override { log.Add("host " + std::to_string(message->what)); }

private:
    Log& log;
};

class TurnsTest : public testing::Test {
protected:
    TurnsTest() { vetch::SetTurns(true); }
    ~TurnsTest() override { vetch::SetTurns(false); }
};

// Three loopers that post to each other and to the application, start a fourth, and quit in several ways.
std::vector<std::string> Session()
{
    Log log;
    Host host(log);
    auto* a = new TestLooper("a", log);
    auto* b = new TestLooper("b", log);
    auto* c = new TestLooper("c", log);
    a->On(1, [&](BMessage&) {
        b->PostMessage(10);
        host.PostMessage(11);
        c->PostMessage(12);
    });
    b->On(10, [&](BMessage&) {
        auto* d = new TestLooper("d", log);
        d->On(20, [&, d](BMessage&) {
            host.PostMessage(21);
            d->Quit();
        });
        d->PostMessage(20);
        d->Run();
        d->PostMessage(22);
    });
    c->On(12, [&](BMessage&) {
        a->PostMessage(13);
        a->PostMessage(B_QUIT_REQUESTED);
        a->PostMessage(14);
        b->PostMessage(15);
    });
    c->On(2, [&](BMessage&) { b->Quit(); });
    for (TestLooper* looper : {a, b, c})
        looper->Run();
    a->PostMessage(1);
    host.PostMessage(5);
    b->PostMessage(6);
    vetch::Settle();
    c->PostMessage(2);
    b->PostMessage(7);
    vetch::Settle();
    c->Quit();
    return log.Lines();
}

TEST_F(TurnsTest, TurnsGiveTheSameOrderEveryTime)
{
    const std::vector<std::string> expected = {
        "a 1",        "host 5",      "b 6",         "b 10",       "host 11",     "c 12", "d 20",
        "d accepted", "d destroyed", "a 13",        "a accepted", "a destroyed", "b 15", "host 21",
        "c 2",        "b accepted",  "b destroyed", "c accepted", "c destroyed",
    };
    for (int round = 0; round < 100; ++round)
        ASSERT_EQ(Session(), expected) << "round " << round;
}

TEST_F(TurnsTest, LoopersRunOnlyInsideSettle)
{
    Log log;
    Host host(log);
    auto* looper = new TestLooper("a", log);
    looper->Run();
    looper->PostMessage(1);
    host.PostMessage(2);
    vetch::RunPending();
    EXPECT_THAT(log.Lines(), ElementsAre("host 2")) << "the application's own need no turn";
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("host 2", "a 1"));
    looper->Quit();
}

TEST_F(TurnsTest, TheDocumentThreadMayQuitALooperThatWaitsForItsTurn)
{
    Log log;
    Host host(log);
    auto* looper = new TestLooper("a", log);
    auto* other = new TestLooper("b", log);
    looper->Run();
    other->Run();
    looper->PostMessage(1);
    other->PostMessage(2);
    looper->Quit();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed"));
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed", "b 2"))
        << "the message that was dropped holds up nobody";
    other->Quit();
}

TEST_F(TurnsTest, ALooperQuitFromElsewhereIsReapedBeforeTheNextTurn)
{
    Log log;
    Host host(log);
    auto* looper = new TestLooper("a", log);
    looper->Run();
    looper->PostMessage(1);
    RunOnThread([=] { looper->Quit(); });
    vetch::JoinThreads();
    host.PostMessage(2);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed", "host 2"));
}

TEST_F(TurnsTest, TurnsWaitForThePluginCallToReturn)
{
    Log log;
    Host host(log);
    auto* looper = new TestLooper("a", log);
    looper->Run();
    looper->PostMessage(1);
    {
        vetch::PluginCall call;
        vetch::Settle();
        EXPECT_THAT(log.Lines(), IsEmpty());
    }
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1"));
    looper->Quit();
}

} // namespace
