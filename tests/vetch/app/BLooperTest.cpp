#include "vetch/app/BLooper.h"

#include "tests/support/CallFunction.h"
#include "tests/support/Gate.h"
#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

using testing::ElementsAre;

namespace {

class Receiver : public BHandler {
public:
    Receiver(std::string name, Log& log) : name(std::move(name)), log(log) {}
    void MessageReceived(BMessage* message) override { log.Add(name + " " + std::to_string(message->what)); }

private:
    std::string name;
    Log& log;
};

class BLooperTest : public testing::Test {
protected:
    Log log;
    BApplication application;
};

TEST_F(BLooperTest, DispatchesInOrderIncludingPostsBeforeItRan)
{
    auto* looper = new TestLooper("a", log);
    looper->PostMessage(1);
    looper->PostMessage(2);
    EXPECT_FALSE(looper->HasRun());
    EXPECT_GT(looper->Run(), 0);
    EXPECT_TRUE(looper->HasRun());
    looper->PostMessage(3);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a 2", "a 3"));
    looper->Quit();
}

TEST_F(BLooperTest, RunningAgainChangesNothing)
{
    auto* looper = new TestLooper("a", log);
    const thread_id thread = looper->Run();
    EXPECT_EQ(looper->Run(), thread);
    looper->PostMessage(1);
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 1"));
    looper->Quit();
}

TEST_F(BLooperTest, DispatchesOnItsOwnThreadWithItsLockHeld)
{
    auto* looper = new TestLooper("a", log);
    std::thread::id thread;
    bool locked = false;
    looper->On(1, [&](BMessage&) {
        thread = std::this_thread::get_id();
        locked = looper->IsLocked();
    });
    looper->Run();
    looper->PostMessage(1);
    vetch::Settle();
    EXPECT_NE(thread, std::this_thread::get_id());
    EXPECT_NE(thread, std::thread::id());
    EXPECT_TRUE(locked);
    EXPECT_FALSE(looper->IsLocked());
    looper->Quit();
}

TEST_F(BLooperTest, TakesPostsFromManyThreadsAndKeepsTheOrderOfEach)
{
    constexpr uint32 kThreads = 4, kPosts = 200;
    auto* looper = new TestLooper("a", log);
    looper->Run();
    for (uint32 thread = 0; thread < kThreads; ++thread)
        RunOnThread([=] {
            for (uint32 i = 0; i < kPosts; ++i)
                looper->PostMessage(thread * kPosts + i);
        });
    vetch::JoinThreads();
    vetch::Settle();

    std::vector<uint32> next(kThreads, 0);
    for (const std::string& line : log.Lines()) {
        const uint32 what = static_cast<uint32>(std::stoul(line.substr(2)));
        EXPECT_EQ(what % kPosts, next[what / kPosts]++);
    }
    EXPECT_THAT(next, testing::Each(kPosts));
    looper->Quit();
}

TEST_F(BLooperTest, CopiesPostedMessages)
{
    auto* looper = new TestLooper("a", log);
    int32 received = 0;
    looper->On(1, [&](BMessage& message) { message.FindInt32("number", &received); });
    {
        BMessage message(1);
        message.AddInt32("number", 5);
        looper->PostMessage(&message);
        message.what = 2;
    }
    looper->Run();
    vetch::Settle();
    EXPECT_EQ(received, 5);
    EXPECT_EQ(looper->PostMessage(nullptr), B_ERROR);
    looper->Quit();
}

TEST_F(BLooperTest, PostsToItsOwnHandlers)
{
    auto* looper = new TestLooper("a", log);
    Receiver receiver("receiver", log);
    EXPECT_EQ(receiver.Looper(), nullptr);
    receiver.SetLooper(looper);
    EXPECT_EQ(receiver.Looper(), looper);
    BMessage message(1);
    looper->PostMessage(&message, &receiver);
    looper->Run();
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("receiver 1"));
    looper->Quit();
    EXPECT_EQ(receiver.Looper(), nullptr) << "its looper is gone";
}

TEST_F(BLooperTest, DropsMessagesForHandlersThatDiedOrMoved)
{
    auto* looper = new TestLooper("a", log);
    auto* other = new TestLooper("b", log);
    auto dead = std::make_unique<Receiver>("dead", log);
    Receiver moved("moved", log);
    dead->SetLooper(looper);
    moved.SetLooper(looper);
    const BMessage message(1);
    looper->PostMessage(&message, dead.get());
    looper->PostMessage(&message, &moved);
    const vetch::HandlerToken token = dead->Token();
    dead.reset();
    moved.SetLooper(other);
    looper->PostMessage(2);
    looper->Run();
    other->Run();
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("a 2"));
    EXPECT_EQ(vetch::FindHandler(token), nullptr);
    EXPECT_EQ(vetch::PostToHandler(token, message), B_ERROR);
    looper->Quit();
    other->Quit();
}

TEST_F(BLooperTest, AHandlerThatDiesInADispatchMissesTheRest)
{
    auto* looper = new TestLooper("a", log);
    auto receiver = std::make_unique<Receiver>("receiver", log);
    receiver->SetLooper(looper);
    looper->On(2, [&](BMessage&) { receiver.reset(); });
    const BMessage message(1);
    looper->PostMessage(&message, receiver.get());
    looper->PostMessage(2);
    looper->PostMessage(&message, receiver.get());
    looper->Run();
    vetch::Settle();
    EXPECT_THAT(log.Lines(), ElementsAre("receiver 1", "a 2"));
    looper->Quit();
}

TEST_F(BLooperTest, IsFoundByItsTokenWhileItLives)
{
    auto* first = new TestLooper("a", log);
    auto* second = new TestLooper("b", log);
    const vetch::LooperToken token = first->LooperToken();
    EXPECT_THAT(vetch::Loopers(), ElementsAre(application.LooperToken(), token, second->LooperToken()));
    EXPECT_EQ(vetch::FindLooper(token), first);
    first->Quit();
    EXPECT_EQ(vetch::FindLooper(token), nullptr);
    EXPECT_THAT(vetch::Loopers(), ElementsAre(application.LooperToken(), second->LooperToken()));
    second->Quit();
}

TEST_F(BLooperTest, AnExceptionDropsOneMessageAndTheNextIsDispatched)
{
    auto* looper = new TestLooper("a", log);
    looper->On(1, [](BMessage&) { throw std::runtime_error("too much"); });
    looper->On(2, [](BMessage&) { throw 5; });
    looper->Run();
    testing::internal::CaptureStderr();
    for (uint32 what : {1, 2, 3})
        looper->PostMessage(what);
    vetch::Settle();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("too much"));
    EXPECT_THAT(log.Lines(), ElementsAre("a 1", "a 2", "a 3"));
    looper->Quit();
}

} // namespace
