#include "wren/desktop/state/QuietTimer.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

constexpr int kNever = 120'000; // milliseconds, for what should have come long before

class QuietTimer : public ::testing::Test {
protected:
    void Count(wren::QuietTimer& timer)
    {
        QObject::connect(&timer, &wren::QuietTimer::Quiet, [this] { ++told; });
    }
    int told = 0;
};

} // namespace

TEST_F(QuietTimer, FiresOnceAfterAPause)
{
    wren::QuietTimer timer(1ms, 24h);
    Count(timer);
    EXPECT_FALSE(timer.IsWaiting());
    for (int round = 1; round <= 3; ++round) {
        timer.Happened();
        timer.Happened();
        EXPECT_TRUE(QTest::qWaitFor([&] { return told == round; }, kNever));
        EXPECT_FALSE(timer.IsWaiting()) << "nothing wakes up while nothing happens";
    }
}

TEST_F(QuietTimer, DoesNotFireWhileEventsContinue)
{
    wren::QuietTimer timer(1h, 24h);
    Count(timer);
    for (int time = 0; time < 100; ++time) {
        timer.Happened();
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(timer.IsWaiting());
}

TEST_F(QuietTimer, FiresEventuallyWithoutAPause)
{
    wren::QuietTimer timer(1h, 20ms);
    Count(timer);
    const auto happens = [&] {
        timer.Happened();
        return told == 2;
    };
    EXPECT_TRUE(QTest::qWaitFor(happens, kNever));
}

TEST_F(QuietTimer, WaitsLongerForExpensiveWork)
{
    wren::QuietTimer patient(1ms, 1ms);
    patient.Happened(24h);
    wren::QuietTimer timer(1ms, 1ms);
    Count(timer);
    timer.Happened();
    EXPECT_TRUE(QTest::qWaitFor([&] { return told == 1; }, kNever));
    EXPECT_TRUE(patient.IsWaiting());
}
