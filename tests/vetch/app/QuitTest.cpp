#include "tests/support/CallFunction.h"
#include "tests/support/Gate.h"
#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"
#include "vetch/support/BLocker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class QuitTest : public testing::Test {
protected:
    Log log;
    BApplication application;
    TestLooper* looper = new TestLooper("a", log);
};

TEST_F(QuitTest, ALooperQuitOnItsOwnThreadFinishesItsMessageFirst)
{
    looper->On(1, [&](BMessage&) {
        looper->Quit();
        looper->Quit();
        log.Add("still there");
    });
    looper->PostMessage(1);
    looper->PostMessage(2);
    looper->Run();
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a accepted", "still there", "a destroyed"));
}

TEST_F(QuitTest, TheDocumentThreadDestroysARunningLooperBeforeTheCallReturns)
{
    Gate dispatching;
    looper->On(1, [&](BMessage&) { dispatching.Open(); });
    looper->Run();
    looper->PostMessage(1);
    dispatching.Wait();
    looper->Quit();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a accepted", "a destroyed"));
    vetch::Settle();
    EXPECT_EQ(log.Count("a destroyed"), 1u);
}

TEST_F(QuitTest, TheDocumentThreadWaitsForADispatchUnderWay)
{
    Gate dispatching;
    looper->On(1, [&](BMessage&) {
        dispatching.Open();
        while (looper->Lock()) // until quit is accepted
            looper->Unlock();
        log.Add("finished");
    });
    looper->Run();
    looper->PostMessage(1);
    dispatching.Wait();
    looper->PostMessage(2);
    looper->Quit();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a accepted", "finished", "a destroyed"));
}

TEST_F(QuitTest, TheDocumentThreadDestroysItsOwnLooperThatNeverRanAtOnce)
{
    looper->PostMessage(1);
    looper->Quit();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed"));
}

TEST_F(QuitTest, ALooperThatNeverRanMayBeDeletedByItsOwner)
{
    looper->PostMessage(1);
    delete looper;
    EXPECT_THAT(log.Lines(), ElementsAre("a destroyed"));
    vetch::Settle();
    looper = nullptr;
}

TEST_F(QuitTest, TheDocumentThreadLeavesAnotherThreadsLooperThatNeverRanToItsMaker)
{
    looper->Quit();
    TestLooper* made = nullptr;
    Gate isMade, isQuit, mayRun;
    RunOnThread([&] {
        made = new TestLooper("b", log);
        isMade.Open();
        isQuit.Wait();
        EXPECT_FALSE(made->Lock());
        log.Add("maker");
        EXPECT_EQ(made->Run(), B_ERROR);
    });
    isMade.Wait();
    made->Quit();
    made->Quit();
    EXPECT_EQ(log.Count("b destroyed"), 0u);
    vetch::RunPending();
    EXPECT_EQ(log.Count("b destroyed"), 0u);
    isQuit.Open();
    vetch::JoinThreads();
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed", "maker", "b accepted", "b destroyed"));
}

TEST_F(QuitTest, AMakerMayQuitALooperThatTheDocumentThreadHasMarked)
{
    Gate isMade, isQuit;
    RunOnThread([&, old = looper] {
        looper = new TestLooper("b", log);
        isMade.Open();
        isQuit.Wait();
        looper->Quit();
        old->Quit();
    });
    isMade.Wait();
    looper->Quit();
    isQuit.Open();
    vetch::JoinThreads();
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("b accepted", "b destroyed", "a accepted", "a destroyed"));
}

TEST_F(QuitTest, LoopersOfAnEndedThreadBelongToTheDocumentThread)
{
    looper->Quit();
    TestLooper* marked = nullptr;
    TestLooper* forgotten = nullptr;
    Gate isMade, mayEnd;
    RunOnThread([&] {
        marked = new TestLooper("marked", log);
        forgotten = new TestLooper("forgotten", log);
        isMade.Open();
        mayEnd.Wait();
    });
    isMade.Wait();
    marked->Quit();
    mayEnd.Open();
    vetch::JoinThreads();
    vetch::Settle();
    EXPECT_EQ(log.Count("marked destroyed"), 1u);
    EXPECT_EQ(log.Count("forgotten destroyed"), 0u);
    forgotten->Quit();
    EXPECT_EQ(log.Count("forgotten destroyed"), 1u);
}

TEST_F(QuitTest, AnotherThreadLeavesARunningLooperToTheDocumentThread)
{
    looper->Run();
    RunOnThread([this] { looper->Quit(); });
    vetch::JoinThreads();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted"));
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed"));
}

TEST_F(QuitTest, AnotherThreadLeavesADocumentLooperThatNeverRanToTheDocumentThread)
{
    RunOnThread([this] { looper->Quit(); });
    vetch::JoinThreads();
    EXPECT_THAT(log.Lines(), IsEmpty()) << "only its maker may touch it";
    EXPECT_EQ(looper->Run(), B_ERROR);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed"));
}

TEST_F(QuitTest, AMakersThreadLeavesALooperThatNeverRanToTheDocumentThread)
{
    looper->Quit();
    RunOnThread([this] { (new TestLooper("b", log))->Quit(); });
    vetch::JoinThreads();
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed", "b accepted", "b destroyed"));
}

TEST_F(QuitTest, ConcurrentRequestsMerge)
{
    for (int round = 0; round < 50; ++round) {
        auto* made = new TestLooper("b", log);
        made->On(1, [=](BMessage&) { made->Quit(); });
        made->Run();
        // The others take part only while the lock shows them that it lives.
        Gate locked;
        RunOnThread([=, &locked] {
            ASSERT_TRUE(made->Lock());
            locked.Open();
            made->PostMessage(1);
            made->Quit();
            made->Unlock();
        });
        locked.Wait();
        made->Quit();
        vetch::JoinThreads();
        vetch::Settle();
    }
    EXPECT_EQ(log.Count("b accepted"), 50u);
    EXPECT_EQ(log.Count("b destroyed"), 50u);
    looper->Quit();
}

TEST_F(QuitTest, ALooperCanQuitAnother)
{
    auto* other = new TestLooper("b", log);
    other->On(1, [this](BMessage&) { looper->Quit(); });
    looper->Run();
    other->Run();
    other->PostMessage(1);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("b 1", "a accepted", "a destroyed"));
    other->Quit();
}

TEST_F(QuitTest, ARequestAsksTheLooperFirst)
{
    looper->agreesToQuit = false;
    looper->On(1, [this](BMessage&) { looper->agreesToQuit = true; });
    looper->Run();
    looper->PostMessage(B_QUIT_REQUESTED);
    looper->PostMessage(1);
    looper->PostMessage(B_QUIT_REQUESTED);
    looper->PostMessage(2);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a accepted", "a destroyed"));
}

TEST_F(QuitTest, PostsAreRefusedAfterwards)
{
    looper->Run();
    const vetch::HandlerToken token = looper->Token();
    Gate accepted, tried;
    looper->On(1, [&](BMessage&) {
        looper->Quit();
        EXPECT_EQ(looper->PostMessage(2), B_ERROR);
        accepted.Open();
        tried.Wait();
    });
    looper->PostMessage(1);
    accepted.Wait();
    EXPECT_EQ(looper->PostMessage(3), B_ERROR);
    EXPECT_EQ(vetch::PostToHandler(token, BMessage(4)), B_ERROR);
    EXPECT_EQ(looper->Run(), B_ERROR);
    tried.Open();
    vetch::Settle();
    EXPECT_EQ(vetch::PostToHandler(token, BMessage(5)), B_ERROR);
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a accepted", "a destroyed"));
}

TEST_F(QuitTest, AServedLooperIsDestroyedAtOnceOrAfterItsDispatch)
{
    looper->Quit();
    auto* outside = new TestLooper("outside", log, vetch::Service::Application);
    outside->Run();
    outside->PostMessage(1);
    outside->Quit();
    EXPECT_EQ(log.Count("outside destroyed"), 1u);
    EXPECT_EQ(log.Count("outside 1"), 0u);

    auto* inside = new TestLooper("inside", log, vetch::Service::Application);
    inside->On(1, [&](BMessage&) {
        inside->Quit();
        vetch::RunPending();
        log.Add("still there");
    });
    inside->Run();
    inside->PostMessage(1);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), testing::IsSupersetOf({"inside 1", "inside accepted", "still there", "inside destroyed"}));
    EXPECT_EQ(log.Lines().back(), "inside destroyed");
}

TEST_F(QuitTest, AServedLooperMayBeQuitFromAnotherThread)
{
    looper->Quit();
    auto* served = new TestLooper("served", log, vetch::Service::Application);
    served->Run();
    RunOnThread([=] { served->Quit(); });
    vetch::JoinThreads();
    EXPECT_EQ(log.Count("served destroyed"), 0u);
    vetch::Settle();
    EXPECT_EQ(log.Count("served accepted"), 1u);
    EXPECT_EQ(log.Count("served destroyed"), 1u);
}

TEST_F(QuitTest, TheApplicationStaysUntilItsMakerDestroysIt)
{
    looper->Quit();
    application.PostMessage(B_QUIT_REQUESTED);
    vetch::Settle();
    EXPECT_EQ(be_app, &application);
    EXPECT_EQ(application.PostMessage(1), B_ERROR);
    EXPECT_FALSE(application.Lock());
}

TEST(BApplication, DestroysEndedLoopersWithItself)
{
    Log log;
    {
        BApplication application;
        auto* ended = new TestLooper("a", log);
        RunOnThread([=] { ended->Quit(); });
        vetch::JoinThreads();
        EXPECT_EQ(be_app, &application);
        EXPECT_TRUE(vetch::OnDocumentThread());
    }
    EXPECT_EQ(be_app, nullptr);
    EXPECT_FALSE(vetch::OnDocumentThread());
    EXPECT_EQ(log.Count("a destroyed"), 1u);
}

#ifndef NDEBUG
TEST_F(QuitTest, QuittingOnTheDocumentThreadWithALockHeldIsAnError)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    BLocker locker;
    EXPECT_DEATH((locker.Lock(), looper->Quit()), "HeldLocks");
    EXPECT_DEATH((looper->Lock(), vetch::RunPending()), "HeldLocks");
    EXPECT_DEATH((looper->Lock(), vetch::JoinThreads()), "HeldLocks");
    EXPECT_DEATH((locker.Lock(), vetch::Settle()), "HeldLocks");
    EXPECT_DEATH((locker.Lock(), vetch::PluginCall()), "HeldLocks");
    looper->Quit();
}
#endif

} // namespace
