#include "tests/support/CallFunction.h"
#include "tests/support/Gate.h"
#include "tests/vetch/app/TestLooper.h"
#include "vetch/app/BApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

// This program plays the plug-in: TestLooper is its class, a plain BLooper is the framework's.
void SomethingInThisProgram() {}

void QuitThisProgramsLoopers()
{
    vetch::QuitLoopersOf(reinterpret_cast<const void*>(&SomethingInThisProgram));
}

class OwnApplication : public BApplication {};

class QuitLoopersTest : public testing::Test {
protected:
    Log log;
    OwnApplication application;
};

TEST_F(QuitLoopersTest, QuitsOnlyTheLoopersOfTheLibrary)
{
    (new TestLooper("running", log))->Run();
    new TestLooper("never ran", log);
    (new TestLooper("served", log, vetch::Service::Application))->Run();
    auto* strange = new BLooper;
    strange->Run();
    QuitThisProgramsLoopers();
    EXPECT_THAT(log.Lines(), ElementsAre("running accepted", "running destroyed", "never ran accepted",
                                         "never ran destroyed", "served accepted", "served destroyed"));
    EXPECT_THAT(vetch::Loopers(), ElementsAre(application.LooperToken(), strange->LooperToken()));
    EXPECT_EQ(be_app, &application) << "the application is nobody's to quit, whatever its class";
    EXPECT_EQ(application.PostMessage(1), B_OK);
    strange->Quit();
}

TEST_F(QuitLoopersTest, IgnoresAnAddressOutsideLibraries)
{
    auto* looper = new TestLooper("a", log);
    vetch::QuitLoopersOf(looper);
    vetch::QuitLoopersOf(nullptr);
    EXPECT_EQ(log.Lines().size(), 0u);
    looper->Quit();
}

TEST_F(QuitLoopersTest, QuitsLoopersMadeMeanwhile)
{
    auto* maker = new TestLooper("maker", log);
    Gate dispatching;
    maker->On(1, [&](BMessage&) {
        dispatching.Open();
        while (maker->Lock()) // until quit is accepted
            maker->Unlock();
        (new TestLooper("made", log))->Run();
        new TestLooper("forgotten", log);
        (new TestLooper("refused", log))->Quit();
    });
    maker->Run();
    maker->PostMessage(1);
    dispatching.Wait();
    QuitThisProgramsLoopers();
    EXPECT_THAT(log.Lines(), testing::IsSupersetOf(
                                 {"maker destroyed", "made destroyed", "forgotten destroyed", "refused destroyed"}));
    EXPECT_THAT(vetch::Loopers(), ElementsAre(application.LooperToken()));
}

TEST_F(QuitLoopersTest, DoesNotWaitForAnotherThreadsLooperThatNeverRan)
{
    Gate isMade, isQuit;
    RunOnThread([&] {
        auto* late = new TestLooper("late", log);
        new TestLooper("forgotten", log);
        auto* strange = new BLooper;
        isMade.Open();
        isQuit.Wait();
        EXPECT_EQ(late->Run(), B_ERROR);
        EXPECT_GT(strange->Run(), 0) << "of another library";
    });
    isMade.Wait();
    QuitThisProgramsLoopers();
    EXPECT_EQ(log.Lines().size(), 0u);
    isQuit.Open();
    vetch::JoinThreads();
    vetch::Settle();
    EXPECT_THAT(log.Lines(),
                UnorderedElementsAre("late accepted", "late destroyed", "forgotten accepted", "forgotten destroyed"));
    ASSERT_EQ(vetch::Loopers().size(), 2u);
    vetch::FindLooper(vetch::Loopers().back())->Quit();
}

} // namespace
