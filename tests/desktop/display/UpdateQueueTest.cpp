#include "wren/desktop/display/UpdateQueue.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using wren::UpdateQueue;

class UpdateQueueTest : public testing::Test {
protected:
    UpdateQueueTest()
    {
        queue.SetWakeUp([this] { ++wakeUps; });
    }
    void Add(const std::string& word)
    {
        queue.Add([this, word] { done += word; });
    }

    UpdateQueue queue;
    int wakeUps = 0;
    std::string done;
};

TEST_F(UpdateQueueTest, KeepsTheOrder)
{
    for (const char* word : {"a", "b", "c"})
        Add(word);
    EXPECT_EQ(done, "");
    queue.Drain();
    EXPECT_EQ(done, "abc");
}

TEST_F(UpdateQueueTest, WakesOnceUntilItIsDrained)
{
    Add("a");
    Add("b");
    EXPECT_EQ(wakeUps, 1);
    queue.Drain();
    Add("c");
    EXPECT_EQ(wakeUps, 2);
}

TEST_F(UpdateQueueTest, AnUpdateAddedDuringADrainWakesAgain)
{
    queue.Add([this] { Add("later"); });
    queue.Drain();
    EXPECT_EQ(done, "");
    EXPECT_EQ(wakeUps, 2);
    queue.Drain();
    EXPECT_EQ(done, "later");
}

TEST_F(UpdateQueueTest, ANestedDrainKeepsTheOrder)
{
    Add("a");
    queue.Add([this] {
        Add("d");
        queue.Drain();
        done += "(end)";
    });
    Add("b");
    queue.Drain();
    EXPECT_EQ(done, "abd(end)");
}

TEST_F(UpdateQueueTest, KeepsTheOrderOfEveryThread)
{
    constexpr int kThreads = 4;
    constexpr int kEach = 1000;
    queue.SetWakeUp(nullptr);
    std::vector<std::vector<int>> seen(kThreads);
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread)
            threads.emplace_back([this, &seen, thread] {
                for (int i = 0; i < kEach; ++i)
                    queue.Add([&seen, thread, i] { seen[thread].push_back(i); });
            });
        queue.Drain(); // some of them now, the rest below
    }
    queue.Drain();
    for (const auto& numbers : seen) {
        ASSERT_EQ(numbers.size(), static_cast<size_t>(kEach));
        for (int i = 0; i < kEach; ++i)
            ASSERT_EQ(numbers[i], i);
    }
}

} // namespace
