#include "vetch/support/BNotifier.h"

#include "vetch/app/BHandler.h"
#include "vetch/app/BMessage.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

class Watcher : public vetch::NoticeReceiver {
public:
    Watcher(std::string name, Lines& lines) : name(std::move(name)), lines(lines) {}
    std::function<void()> then = [] {};

    void NoticeReceived(uint32 what, const BMessage*) override
    {
        lines.push_back(name + " " + std::to_string(what));
        then();
    }

private:
    std::string name;
    Lines& lines;
};

class BNotifierTest : public testing::Test {
protected:
    // What the watchers hear of one notice.
    Lines Heard(uint32 what)
    {
        lines.clear();
        notifier->SendNotices(what);
        return lines;
    }

    Lines lines;
    std::unique_ptr<BNotifier> notifier = std::make_unique<BNotifier>();
    std::unique_ptr<Watcher> first = std::make_unique<Watcher>("first", lines);
    std::unique_ptr<Watcher> second = std::make_unique<Watcher>("second", lines);
    std::unique_ptr<Watcher> third = std::make_unique<Watcher>("third", lines);
};

TEST_F(BNotifierTest, NotifiesTheWatchersOfACodeInOrder)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(second.get(), 1);
    notifier->StartWatchingBy(second.get(), 2);
    EXPECT_THAT(Heard(1), ElementsAre("first 1", "second 1"));
    EXPECT_THAT(Heard(2), ElementsAre("second 2"));
    EXPECT_THAT(Heard(3), IsEmpty());
}

TEST_F(BNotifierTest, WatchingTwiceCountsOnce)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(first.get(), 1);
    EXPECT_THAT(Heard(1), ElementsAre("first 1"));
    notifier->StopWatchingBy(first.get(), 1);
    EXPECT_THAT(Heard(1), IsEmpty());
}

TEST_F(BNotifierTest, StoppingOneCodeLeavesTheOthers)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(first.get(), 2);
    notifier->StopWatchingBy(first.get(), 1);
    notifier->StopWatchingBy(first.get(), 7);
    notifier->StopWatchingBy(second.get(), 2);
    notifier->StopWatchingBy(nullptr, 2);
    notifier->StartWatchingBy(nullptr, 2);
    EXPECT_THAT(Heard(1), IsEmpty());
    EXPECT_THAT(Heard(2), ElementsAre("first 2"));
}

TEST_F(BNotifierTest, ForgetsAWatcherThatDied)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(first.get(), 2);
    notifier->StartWatchingBy(second.get(), 1);
    first.reset();
    EXPECT_THAT(Heard(1), ElementsAre("second 1"));
    EXPECT_THAT(Heard(2), IsEmpty());
}

TEST_F(BNotifierTest, ItsWatchersForgetItWhenItDies)
{
    BNotifier other;
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(first.get(), 2);
    other.StartWatchingBy(first.get(), 1);
    notifier.reset();
    other.SendNotices(1);
    EXPECT_THAT(lines, ElementsAre("first 1"));
    first.reset(); // must not touch the dead notifier
    lines.clear();
    other.SendNotices(1);
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(BNotifierTest, SurvivesAWatcherThatStopsDuringANotice)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(second.get(), 1);
    notifier->StartWatchingBy(third.get(), 1);
    first->then = [&] { notifier->StopWatchingBy(first.get(), 1); };
    EXPECT_THAT(Heard(1), ElementsAre("first 1", "second 1", "third 1")) << "nobody is passed over";
    EXPECT_THAT(Heard(1), ElementsAre("second 1", "third 1"));
}

TEST_F(BNotifierTest, SurvivesAWatcherThatDiesDuringANotice)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(second.get(), 1);
    Watcher* const dying = first.release();
    dying->then = [=] { delete dying; };
    EXPECT_THAT(Heard(1), ElementsAre("first 1", "second 1"));
    EXPECT_THAT(Heard(1), ElementsAre("second 1"));
}

TEST_F(BNotifierTest, DoesNotNotifyAWatcherThatAnotherDestroyed)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(second.get(), 1);
    first->then = [&] { second.reset(); };
    EXPECT_THAT(Heard(1), ElementsAre("first 1"));
}

TEST_F(BNotifierTest, NotifiesANewWatcherFromTheNextNoticeOn)
{
    notifier->StartWatchingBy(first.get(), 1);
    first->then = [&] { notifier->StartWatchingBy(second.get(), 1); };
    EXPECT_THAT(Heard(1), ElementsAre("first 1"));
    EXPECT_THAT(Heard(1), ElementsAre("first 1", "second 1"));
}

TEST_F(BNotifierTest, MayDieDuringANestedNotice)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(first.get(), 2);
    notifier->StartWatchingBy(second.get(), 2);
    notifier->StartWatchingBy(second.get(), 1);
    bool nested = false;
    first->then = [&] {
        if (!std::exchange(nested, true))
            notifier->SendNotices(2);
        else
            notifier.reset();
    };
    EXPECT_THAT(Heard(1), ElementsAre("first 1", "first 2"));
}

TEST_F(BNotifierTest, ANestedNoticeLeavesOutStoppedWatchers)
{
    notifier->StartWatchingBy(first.get(), 1);
    notifier->StartWatchingBy(second.get(), 1);
    notifier->StartWatchingBy(second.get(), 2);
    first->then = [&] {
        notifier->SendNotices(2);
        second.reset();
    };
    EXPECT_THAT(Heard(1), ElementsAre("first 1", "second 2"));
    EXPECT_THAT(Heard(2), IsEmpty());
}

class NoticeHandler : public BHandler {
public:
    void MessageReceived(BMessage* message) override
    {
        what = message->what;
        message->FindInt32("number", &number);
        message->what = 99;
    }
    uint32 what = 0;
    int32 number = 0;
};

TEST_F(BNotifierTest, AHandlerReceivesANoticeAsAMessage)
{
    NoticeHandler handler;
    notifier->StartWatchingBy(&handler, 5);
    BMessage message(1);
    message.AddInt32("number", 3);
    notifier->SendNotices(5, &message);
    EXPECT_EQ(handler.what, 5u);
    EXPECT_EQ(handler.number, 3);
    EXPECT_EQ(message.what, 1u) << "it received a copy";
    notifier->SendNotices(5);
    EXPECT_EQ(handler.what, 5u) << "a notice needs no message";
}

} // namespace
