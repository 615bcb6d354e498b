#include "wren/desktop/display/GuiQueue.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using wren::GuiQueue;

// A queue of words: each is written down when its turn comes, but for those that do something else.
class GuiQueueTest : public testing::Test {
protected:
    GuiQueueTest()
    {
        queue.SetWakeUp([this] { ++wakeUps; });
    }
    void Drain()
    {
        queue.Drain([this](const std::string& word) {
            const auto found = doings.find(word);
            found == doings.end() ? void(done += word) : found->second();
        });
    }

    GuiQueue<std::string> queue;
    std::map<std::string, std::function<void()>> doings;
    int wakeUps = 0;
    std::string done;
};

TEST_F(GuiQueueTest, KeepsTheOrder)
{
    for (const char* word : {"a", "b", "c"})
        queue.Add(word);
    EXPECT_EQ(done, "");
    Drain();
    EXPECT_EQ(done, "abc");
}

TEST_F(GuiQueueTest, WakesOnceUntilItIsDrained)
{
    queue.Add("a");
    queue.Add("b");
    EXPECT_EQ(wakeUps, 1);
    Drain();
    queue.Add("c");
    EXPECT_EQ(wakeUps, 2);
}

TEST_F(GuiQueueTest, AnItemAddedDuringADrainWakesAgain)
{
    doings["add"] = [this] { queue.Add("later"); };
    queue.Add("add");
    Drain();
    EXPECT_EQ(done, "");
    EXPECT_EQ(wakeUps, 2);
    Drain();
    EXPECT_EQ(done, "later");
}

TEST_F(GuiQueueTest, ANestedDrainKeepsTheOrder)
{
    doings["drain"] = [this] {
        queue.Add("d");
        Drain();
        done += "(end)";
    };
    for (const char* word : {"a", "drain", "b"})
        queue.Add(word);
    Drain();
    EXPECT_EQ(done, "abd(end)");
}

TEST(GuiQueue, KeepsTheOrderOfEveryThread)
{
    constexpr int kThreads = 4;
    constexpr int kEach = 1000;
    GuiQueue<std::pair<int, int>> queue; // a thread, and its own next number
    std::vector<std::vector<int>> seen(kThreads);
    const auto drain = [&] {
        queue.Drain([&seen](const std::pair<int, int>& item) { seen[item.first].push_back(item.second); });
    };
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread)
            threads.emplace_back([&queue, thread] {
                for (int i = 0; i < kEach; ++i)
                    queue.Add({thread, i});
            });
        drain(); // some of them now, the rest below
    }
    drain();
    for (const auto& numbers : seen) {
        ASSERT_EQ(numbers.size(), static_cast<size_t>(kEach));
        for (int i = 0; i < kEach; ++i)
            ASSERT_EQ(numbers[i], i);
    }
}

} // namespace
