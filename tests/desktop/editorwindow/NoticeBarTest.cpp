#include "wren/desktop/NoticeBar.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

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
    QScrollBar& Scroll() { return *bar->findChild<QScrollArea*>()->verticalScrollBar(); }

    QWidget window;
    wren::NoticeBar* bar = new wren::NoticeBar;
};

} // namespace

TEST_F(NoticeBarStory, WhatIsToldLastIsSeen)
{
    TellMany();
    ASSERT_GT(Scroll().maximum(), 0);
    EXPECT_EQ(Scroll().value(), Scroll().maximum());
    ResizeTo(60);
    EXPECT_EQ(Scroll().value(), Scroll().maximum());
}

TEST_F(NoticeBarStory, WhoHasScrolledUpStaysThereUntilSomethingNewIsTold)
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

TEST_F(NoticeBarStory, OfASubjectTheLastWordCountsUntilItIsWithdrawn)
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
