#include "tests/support/CallFunction.h"
#include "tests/support/Gate.h"
#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

class LockTest : public testing::Test {
protected:
    TestLooper* RunningLooper()
    {
        auto* looper = new TestLooper("a", log);
        looper->Run();
        return looper;
    }

    Log log;
    BApplication application;
};

TEST_F(LockTest, IsRecursive)
{
    TestLooper* looper = RunningLooper();
    ASSERT_TRUE(looper->Lock());
    ASSERT_TRUE(looper->Lock());
    looper->Unlock();
    EXPECT_TRUE(looper->IsLocked());
    looper->PostMessage(1);
    EXPECT_TRUE(log.Lines().empty()) << "nothing is dispatched while another thread holds the lock";
    looper->Unlock();
    EXPECT_FALSE(looper->IsLocked());
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1"));
    looper->Quit();
}

TEST_F(LockTest, KeepsThreadsApart)
{
    constexpr int kThreads = 4, kRounds = 500;
    TestLooper* looper = RunningLooper();
    int counter = 0; // guarded by the looper's lock alone
    looper->On(1, [&](BMessage&) { ++counter; });
    for (int i = 0; i < kThreads; ++i)
        RunOnThread([&, looper] {
            for (int round = 0; round < kRounds; ++round) {
                looper->PostMessage(1);
                ASSERT_TRUE(looper->Lock());
                ++counter;
                looper->Unlock();
            }
        });
    vetch::JoinThreads();
    vetch::Settle();
    ASSERT_TRUE(looper->Lock());
    EXPECT_EQ(counter, 2 * kThreads * kRounds);
    looper->Unlock();
    looper->Quit();
}

TEST_F(LockTest, FailsOnceQuitIsAccepted)
{
    TestLooper* looper = RunningLooper();
    Gate accepted, tried;
    bool ownThread = true;
    looper->On(1, [&](BMessage&) {
        looper->Quit();
        ownThread = looper->Lock();
        accepted.Open();
        tried.Wait();
    });
    looper->PostMessage(1);
    accepted.Wait();
    EXPECT_FALSE(looper->Lock());
    EXPECT_EQ(looper->PostMessage(2), B_ERROR);
    tried.Open();
    vetch::Settle();
    EXPECT_FALSE(ownThread);
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a accepted", "a destroyed"));
}

TEST_F(LockTest, WaitersFailOnceQuitIsAccepted)
{
    for (int round = 0; round < 100; ++round) {
        TestLooper* looper = RunningLooper();
        Gate dispatching, waiting;
        std::atomic<bool> gotIt = true;
        looper->On(1, [&](BMessage&) {
            dispatching.Open();
            waiting.Wait();
            std::this_thread::yield(); // lets the other thread get into Lock(), in most rounds
            looper->Quit();
        });
        looper->PostMessage(1);
        dispatching.Wait();
        RunOnThread([&, looper] {
            waiting.Open();
            gotIt = looper->Lock();
        });
        vetch::JoinThreads();
        EXPECT_FALSE(gotIt);
        vetch::Settle();
    }
    EXPECT_EQ(log.Count("a destroyed"), 100u);
}

TEST_F(LockTest, ALooperIsNotDestroyedWhileAnotherThreadHoldsItsLock)
{
    TestLooper* looper = RunningLooper();
    Gate locked;
    RunOnThread([&, looper] {
        ASSERT_TRUE(looper->Lock());
        locked.Open();
        // Until quit is accepted, the holder gets it again and again.
        while (looper->Lock())
            looper->Unlock();
        log.Add("holder still there");
        looper->Unlock();
    });
    locked.Wait();
    looper->Quit();
    // The holder may learn of the quit before the looper itself is told.
    EXPECT_THAT(log.Lines(), UnorderedElementsAre("a accepted", "holder still there", "a destroyed"));
    EXPECT_EQ(log.Lines().back(), "a destroyed");
    vetch::JoinThreads();
}

TEST_F(LockTest, AMakerMayUseTheLooperWhileItHoldsTheLock)
{
    std::atomic<BLooper*> published = nullptr;
    Gate running;
    RunOnThread([&] {
        auto* looper = new TestLooper("a", log);
        ASSERT_TRUE(looper->Lock());
        looper->PostMessage(1);
        ASSERT_GT(looper->Run(), 0);
        published = looper;
        running.Open();
        while (looper->Lock())
            looper->Unlock();
        looper->On(2, [](BMessage&) {});
        looper->Unlock();
    });
    running.Wait();
    published.load()->Quit();
    vetch::JoinThreads();
    EXPECT_THAT(log.Lines(), ElementsAre("a accepted", "a destroyed"));
}

TEST_F(LockTest, OnlyTheDocumentThreadLocksALooperThatTheApplicationServes)
{
    auto* looper = new TestLooper("a", log, vetch::Service::Application);
    EXPECT_TRUE(looper->Lock());
    RunOnThread([=] { EXPECT_FALSE(looper->Lock()) << "it would wait for the document thread"; });
    vetch::JoinThreads();
    EXPECT_TRUE(looper->Lock());
    looper->Unlock();
    looper->Unlock();
    EXPECT_FALSE(looper->IsLocked());
    looper->Quit();
}

} // namespace
