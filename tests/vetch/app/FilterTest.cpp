#include "vetch/app/BMessageFilter.h"

#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

class LoggedFilter : public BMessageFilter {
public:
    LoggedFilter(std::string name, Log& log, filter_result result = B_DISPATCH_MESSAGE, BHandler* redirected = nullptr)
        : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE), name(std::move(name)), log(log), result(result),
          redirected(redirected)
    {
    }
    ~LoggedFilter() override { log.Add(name + " destroyed"); }
    filter_result Filter(BMessage* message, BHandler** target) override
    {
        log.Add(name + " " + std::to_string(message->what));
        if (redirected)
            *target = redirected;
        return result;
    }

private:
    std::string name;
    Log& log;
    filter_result result;
    BHandler* redirected;
};

class View : public BHandler {
public:
    View(std::string name, Log& log, BLooper* looper) : name(std::move(name)), log(log) { SetLooper(looper); }
    void MessageReceived(BMessage* message) override { log.Add(name + " " + std::to_string(message->what)); }

private:
    std::string name;
    Log& log;
};

class FilterTest : public testing::Test {
protected:
    ~FilterTest() override
    {
        if (running)
            looper->Quit();
    }

    // What happened when a message of code 1 was posted to the handler.
    std::vector<std::string> Post(BHandler* handler)
    {
        const BMessage message(1);
        looper->PostMessage(&message, handler);
        looper->Run();
        vetch::Settle();
        return log.Lines();
    }

    Log log;
    BApplication application;
    TestLooper* looper = new TestLooper("looper", log);
    View view{"view", log, looper};
    View other{"other", log, looper};
    bool running = true;
};

TEST_F(FilterTest, FiltersRunBeforeTheHandlerInInsertionOrder)
{
    view.AddFilter(new LoggedFilter("first", log));
    view.AddFilter(new LoggedFilter("second", log));
    view.AddFilter(nullptr);
    EXPECT_THAT(Post(&view), ElementsAre("first 1", "second 1", "view 1"));
}

TEST_F(FilterTest, AFilterMayStopAMessage)
{
    view.AddFilter(new LoggedFilter("first", log, B_SKIP_MESSAGE));
    view.AddFilter(new LoggedFilter("second", log));
    EXPECT_THAT(Post(&view), ElementsAre("first 1"));
}

TEST_F(FilterTest, AHandlersFilterIgnoresOtherHandlers)
{
    other.AddFilter(new LoggedFilter("filter", log, B_SKIP_MESSAGE));
    EXPECT_THAT(Post(&view), ElementsAre("view 1"));
}

TEST_F(FilterTest, ALoopersFilterSeesItsMessages)
{
    looper->AddFilter(new LoggedFilter("filter", log));
    EXPECT_THAT(Post(nullptr), ElementsAre("filter 1", "looper 1"));
}

TEST_F(FilterTest, AFilterMayRedirectAMessage)
{
    view.AddFilter(new LoggedFilter("first", log, B_DISPATCH_MESSAGE, &other));
    view.AddFilter(new LoggedFilter("second", log));
    other.AddFilter(new LoggedFilter("others", log));
    EXPECT_THAT(Post(&view), ElementsAre("first 1", "others 1", "other 1"));
}

TEST_F(FilterTest, FiltersThatRedirectInACircleStop)
{
    view.AddFilter(new LoggedFilter("to", log, B_DISPATCH_MESSAGE, &other));
    other.AddFilter(new LoggedFilter("fro", log, B_DISPATCH_MESSAGE, &view));
    EXPECT_THAT(Post(&view), ElementsAre("to 1", "fro 1", "view 1"));
}

TEST_F(FilterTest, AFilterCannotRedirectToAnotherLoopersHandler)
{
    auto* stranger = new TestLooper("stranger", log);
    view.AddFilter(new LoggedFilter("filter", log, B_DISPATCH_MESSAGE, stranger));
    EXPECT_THAT(Post(&view), ElementsAre("filter 1"));
    stranger->Quit();
}

TEST_F(FilterTest, FiltersDieWithTheirHandler)
{
    looper->AddFilter(new LoggedFilter("filter", log));
    looper->Quit();
    running = false;
    EXPECT_THAT(log.Lines(), ElementsAre("looper accepted", "looper destroyed", "filter destroyed"));
}

} // namespace
