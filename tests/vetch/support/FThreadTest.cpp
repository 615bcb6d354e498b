#include "vetch/support/FThread.h"

#include "tests/support/CallFunction.h"
#include "tests/support/Gate.h"
#include "tests/support/RefusedThreads.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/resource.h>
#include <thread>

namespace {

struct Worker {
    void Add(int number) { sum += number; }
    void AddProduct(int first, long second) { sum += static_cast<int>(first * second); }
    std::atomic<int> sum = 0;
};

TEST(FThread, RunsAMemberFunctionWithItsArguments)
{
    Worker worker;
    FThread::Run(&Worker::Add, &worker, 4);
    FThread::Run(&Worker::AddProduct, &worker, 5, 6L);
    vetch::JoinThreads();
    EXPECT_EQ(worker.sum, 34);
}

TEST(FThread, RunsAtALowerPriority)
{
    const int before = ::getpriority(PRIO_PROCESS, 0);
    int inBackground = before;
    RunOnThread([&] { inBackground = ::getpriority(PRIO_PROCESS, 0); });
    vetch::JoinThreads();
    EXPECT_EQ(inBackground, std::min(before + 10, 19));
    EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), before) << "who starts one keeps the priority he has";
}

TEST(FThread, RunsOnItsOwnThread)
{
    std::thread::id thread;
    RunOnThread([&] { thread = std::this_thread::get_id(); });
    vetch::JoinThreads();
    EXPECT_NE(thread, std::thread::id());
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(FThread, DestroysTheFunctionObjectAfterItRan)
{
    const auto witness = std::make_shared<int>(0);
    RunOnThread([witness] {});
    vetch::JoinThreads();
    EXPECT_EQ(witness.use_count(), 1);
}

TEST(FThread, AFunctionObjectKnowsItsSize)
{
    using One = SingleParamMemberFunctionObject<Worker, int>;
    using Two = TwoParamMemberFunctionObject<Worker, int, long>;
    Worker worker;
    EXPECT_EQ(One(&Worker::Add, &worker, 1).Size(), sizeof(One));
    EXPECT_EQ(Two(&Worker::AddProduct, &worker, 1, 1L).Size(), sizeof(Two));
    EXPECT_LT(One(&Worker::Add, &worker, 1).Size(), Two(&Worker::AddProduct, &worker, 1, 1L).Size());
}

TEST(FThread, IsIdleOnlyWhenAllHaveEnded)
{
    EXPECT_TRUE(vetch::ThreadsAreIdle());
    Gate mayEnd;
    RunOnThread([&] { mayEnd.Wait(); });
    EXPECT_FALSE(vetch::ThreadsAreIdle());
    mayEnd.Open();
    vetch::JoinThreads();
    EXPECT_TRUE(vetch::ThreadsAreIdle());
}

void RunChain(std::atomic<int>& count, int length)
{
    ++count;
    if (length > 1)
        RunOnThread([&count, length] { RunChain(count, length - 1); });
}

TEST(FThread, JoiningWaitsForThreadsThatThreadsStart)
{
    std::atomic<int> count = 0;
    RunOnThread([&] { RunChain(count, 20); });
    vetch::JoinThreads();
    EXPECT_EQ(count, 20);
}

TEST(FThread, MayBeStartedFromManyThreads)
{
    std::atomic<int> count = 0;
    for (int i = 0; i < 4; ++i)
        RunOnThread([&] {
            for (int j = 0; j < 50; ++j)
                RunOnThread([&] { ++count; });
        });
    vetch::JoinThreads();
    EXPECT_EQ(count, 200);
}

TEST(FThread, ReportsAnExceptionAndEnds)
{
    testing::internal::CaptureStderr();
    RunOnThread([] { throw std::runtime_error("no tags today"); });
    RunOnThread([] { throw 1; });
    vetch::JoinThreads();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("no tags today"));
    EXPECT_TRUE(vetch::ThreadsAreIdle());
}

TEST(DetachedThread, IsCountedUntilWhatItWasGivenIsGone)
{
    EXPECT_TRUE(vetch::BackgroundIsIdle());
    Gate mayEnd;
    const auto given = std::make_shared<int>(0);
    ASSERT_TRUE(vetch::StartDetached(nullptr, [&mayEnd, given] { mayEnd.Wait(); }));
    EXPECT_FALSE(vetch::BackgroundIsIdle());
    EXPECT_TRUE(vetch::ThreadsAreIdle()) << "it is not one that a quit waits for";
    vetch::JoinThreads();
    EXPECT_FALSE(vetch::WaitForIdleBackground(std::chrono::milliseconds(1)));
    mayEnd.Open();
    EXPECT_TRUE(vetch::WaitForIdleBackground(std::chrono::minutes(1)));
    EXPECT_EQ(given.use_count(), 1);
}

TEST(DetachedThread, IsNotCountedWhenItDoesNotStart)
{
    Complaints complaints;
    const RefusedThreads refused;
    EXPECT_FALSE(vetch::StartDetached("nothing is made", [] {}));
    EXPECT_TRUE(vetch::BackgroundIsIdle());
    EXPECT_THAT(complaints.Take(), testing::ElementsAre(NoThreadsFor("nothing is made")));
}

TEST(DetachedThread, ReportsAnExceptionAndEnds)
{
    Complaints complaints;
    ASSERT_TRUE(vetch::StartDetached(nullptr, [] { throw std::runtime_error("no tags today"); }));
    EXPECT_TRUE(vetch::WaitForIdleBackground(std::chrono::minutes(1)));
    EXPECT_THAT(complaints.Take(), testing::ElementsAre(testing::HasSubstr("no tags today")));
}

TEST(DetachedThread, AnFThreadIsBackgroundWorkToo)
{
    Gate mayEnd;
    RunOnThread([&] { mayEnd.Wait(); });
    EXPECT_FALSE(vetch::BackgroundIsIdle());
    mayEnd.Open();
    EXPECT_TRUE(vetch::WaitForIdleBackground(std::chrono::minutes(1)));
    vetch::JoinThreads();
}

} // namespace
