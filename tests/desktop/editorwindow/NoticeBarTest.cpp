#include "wren/desktop/NoticeBar.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace {

class NoticeBarStory : public ::testing::Test {
protected:
    NoticeBarStory()
    {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(bar);
        column->addStretch(1);
        window.resize(400, 600);
        window.show();
    }
    void TellMany()
    {
        for (int number = 0; number < 40; ++number)
            bar->Tell(QString("notice %1").arg(number));
        QApplication::processEvents();
    }
    void ResizeTo(int width)
    {
        window.resize(width, 600);
        QApplication::processEvents();
    }
    QStringList Shown() const { return bar->findChild<QLabel*>()->text().split('\n'); }
    QToolButton& ShowAll() const { return *bar->findChild<QToolButton*>("all"); }
    static QStringList Notices(int count)
    {
        QStringList notices;
        for (int number = 1; number <= count; ++number)
            notices.append(QString("notice %1").arg(number));
        return notices;
    }
    // The fastest of a few runs, in nanoseconds a notice.
    static qint64 TimeOfEach(int count)
    {
        qint64 fastest = std::numeric_limits<qint64>::max();
        for (int run = 0; run < 5; ++run) {
            wren::NoticeBar fresh;
            const QStringList notices = Notices(count);
            QElapsedTimer timer;
            timer.start();
            fresh.TellAll(notices);
            fastest = std::min(fastest, timer.nsecsElapsed() / count);
        }
        return fastest;
    }
    QScrollBar& Scroll() { return *bar->findChild<QScrollArea*>()->verticalScrollBar(); }

    QWidget window;
    wren::NoticeBar* bar = new wren::NoticeBar;
};

} // namespace

TEST_F(NoticeBarStory, TheNewestNoticeIsVisible)
{
    TellMany();
    ASSERT_GT(Scroll().maximum(), 0);
    EXPECT_EQ(Scroll().value(), Scroll().maximum());
    ResizeTo(60);
    EXPECT_EQ(Scroll().value(), Scroll().maximum());
}

TEST_F(NoticeBarStory, TheScrollPositionStaysUntilANewNoticeComes)
{
    TellMany();
    Scroll().setValue(3);
    ResizeTo(390);
    EXPECT_EQ(Scroll().value(), 3);
    ResizeTo(60);
    EXPECT_EQ(Scroll().value(), 3);
    bar->Tell("new");
    QApplication::processEvents();
    EXPECT_EQ(Scroll().value(), Scroll().maximum());
}

TEST_F(NoticeBarStory, TheLastNoticeOfASubjectCountsUntilItIsWithdrawn)
{
    bar->Tell("a was changed", "a");
    bar->Tell("no subject");
    bar->Tell("b was changed", "b");
    bar->Tell("a is gone", "a");
    EXPECT_EQ(bar->Told(), "no subject\nb was changed\na is gone");
    bar->Withdraw("a");
    bar->Withdraw("never told");
    EXPECT_EQ(bar->Told(), "no subject\nb was changed");
    bar->Withdraw("b");
    EXPECT_TRUE(bar->isVisible());
    bar->Tell("no subject", "c");
    bar->Withdraw("c");
    EXPECT_FALSE(bar->isVisible()) << "nothing is left to be told";
}

TEST_F(NoticeBarStory, TheNewestOfVeryManyNoticesAreShownAndTheRestCounted)
{
    const int most = static_cast<int>(wren::NoticeBar::kMostShown);
    bar->TellAll(Notices(most));
    EXPECT_EQ(Shown(), Notices(most));
    EXPECT_FALSE(ShowAll().isVisible());
    bar->TellAll(Notices(most + 40));
    EXPECT_EQ(Shown().size(), most + 1);
    EXPECT_EQ(Shown().front(), "notice 41");
    EXPECT_THAT(Shown().back().toStdString(), ::testing::StartsWith("40 older notices"));
    EXPECT_TRUE(ShowAll().isVisible());
    EXPECT_EQ(bar->Told().split('\n'), Notices(most + 40));
    bar->Tell("notice 1");
    EXPECT_EQ(Shown().front(), "notice 42") << "told once more, it is the newest";
    EXPECT_EQ(bar->Told().count('\n'), most + 39);
}

// A ratio within one run: a quadratic one would be a hundred.
TEST_F(NoticeBarStory, TheTimePerNoticeDoesNotGrowWithTheirNumber)
{
    EXPECT_LT(TimeOfEach(20'000), 10 * TimeOfEach(200));
}
