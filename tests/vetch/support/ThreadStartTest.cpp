#include "vetch/support/ThreadStart.h"

#include "tests/support/CallFunction.h"
#include "tests/support/RefusedThreads.h"
#include "tests/support/WaitLimit.h"

#include <gmock/gmock.h>

#include <atomic>
#include <stdexcept>

namespace {

using testing::ElementsAre;

TEST(ThreadStart, ARefusedThreadRunsNothingAndIsNotJoinable)
{
    Complaints complaints;
    const RefusedThreads refused;
    bool hasRun = false;
    EXPECT_FALSE(vetch::StartThread("nothing is done", [&] { hasRun = true; }).joinable());
    EXPECT_FALSE(hasRun);
    EXPECT_TRUE(vetch::ThreadsWereRefused());
    EXPECT_THAT(complaints.Take(), ElementsAre(NoThreadsFor("nothing is done")));
}

TEST(ThreadStart, EachRefusalIsReportedOnceUntilAThreadStarts)
{
    Complaints complaints;
    for (int round = 0; round < 2; ++round) {
        {
            const RefusedThreads refused;
            for (int start = 0; start < 3; ++start) {
                vetch::StartThread("one thing is not done", [] {});
                vetch::StartThread("another is not done", [] {});
                vetch::StartThread(nullptr, [] {});
            }
        }
        EXPECT_THAT(complaints.Take(),
                    ElementsAre(NoThreadsFor("one thing is not done"), NoThreadsFor("another is not done")));
        vetch::StartThread("one thing is not done", [] {}).join();
        vetch::StartThread("another is not done", [] {}).join();
    }
}

TEST(ThreadStart, AnExceptionEndsTheThreadAndIsReported)
{
    Complaints complaints;
    vetch::StartThread("nothing is done", [] { throw std::runtime_error("no memory"); }).join();
    vetch::StartThread("nothing is done", [] { throw 1; }).join();
    EXPECT_THAT(complaints.Take(),
                ElementsAre("a thread ended with an exception: no memory", "a thread ended with an exception"));
}

TEST(Complaint, GoesToStandardErrorWithoutAListener)
{
    testing::internal::CaptureStderr();
    vetch::Complain("the disk is gone");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "vetch: the disk is gone\n");
}

struct Counter {
    void Add(int number) { sum += number; }
    std::atomic<int> sum = 0;
};

TEST(FThread, ARefusedThreadThrowsAndLeavesTheOthersRunning)
{
    Complaints complaints;
    Counter counter;
    FThread::Run(&Counter::Add, &counter, 1);
    JoinThreads();
    FThread::Run(&Counter::Add, &counter, 2); // it may have ended when the next one is refused
    {
        const RefusedThreads refused;
        EXPECT_THROW(FThread::Run(&Counter::Add, &counter, 4), std::system_error);
        EXPECT_THROW(FThread::Run(&Counter::Add, &counter, 8), std::system_error);
    }
    FThread::Run(&Counter::Add, &counter, 16);
    JoinThreads();
    EXPECT_TRUE(vetch::ThreadsAreIdle());
    EXPECT_EQ(counter.sum, 19);
    EXPECT_THAT(complaints.Take(),
                ElementsAre(NoThreadsFor("work in the background is put off until it is asked for again")));
}

TEST(FThread, ARefusedThreadDestroysItsFunction)
{
    const Complaints complaints;
    const RefusedThreads refused;
    const auto witness = std::make_shared<int>(1);
    EXPECT_THROW(RunOnThread([witness] {}), std::system_error);
    EXPECT_EQ(witness.use_count(), 1);
}

// Threads that have ended are joined when the next one starts; one that does not is no reason to forget them.
TEST(FThread, ARefusedThreadJoinsEndedOnes)
{
    const Complaints complaints;
    Counter counter;
    for (int i = 0; i < 20; ++i)
        FThread::Run(&Counter::Add, &counter, 1);
    {
        const WaitLimit limit("all threads had ended");
        while (!vetch::ThreadsAreIdle())
            std::this_thread::yield();
    }
    const RefusedThreads refused;
    EXPECT_THROW(FThread::Run(&Counter::Add, &counter, 1), std::system_error);
    EXPECT_EQ(counter.sum, 20);
}

} // namespace
