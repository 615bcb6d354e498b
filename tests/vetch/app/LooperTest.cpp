#include "vetch/app/BLooper.h"

#include "vetch/app/BApplication.h"
#include "vetch/app/Loop.h"

#include <atomic>
#include <gtest/gtest.h>

namespace {

class Counter : public BLooper {
public:
    explicit Counter(std::atomic<int>& count) : count(count) {}
    ~Counter() override { count += 1000; }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == 1)
            ++count;
        else
            BLooper::MessageReceived(message);
    }

private:
    std::atomic<int>& count;
};

TEST(BLooper, DispatchesWhatWasPostedBeforeAndAfterItRuns)
{
    BApplication application;
    std::atomic<int> count = 0;
    auto* looper = new Counter(count);
    looper->PostMessage(1);
    looper->Run();
    looper->PostMessage(1);
    vetch::Settle();
    EXPECT_EQ(count, 2);
    looper->PostMessage(B_QUIT_REQUESTED);
    vetch::Settle();
    EXPECT_EQ(count, 1002);
    EXPECT_EQ(vetch::Loopers().size(), 1u);
}

} // namespace
