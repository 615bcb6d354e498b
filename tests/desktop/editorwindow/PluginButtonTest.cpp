#include "wren/desktop/PluginButton.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPixmap>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using wren::PluginButton;

namespace {

QIcon SomeIcon()
{
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    return picture;
}

class ToolButton : public ::testing::Test {
protected:
    ToolButton() { button.show(); }

    QPoint Middle() const { return button.rect().center(); }
    void Down() { QTest::mousePress(&button, Qt::LeftButton, {}, Middle()); }
    void Up() { QTest::mouseRelease(&button, Qt::LeftButton, {}, Middle()); }

    PluginButton button{SomeIcon()};
    QSignalSpy clicked{&button, &PluginButton::Clicked};
    QSignalSpy asked{&button, &PluginButton::PopUpAsked};
};

} // namespace

TEST_F(ToolButton, ReportsTheModifiersHeldDuringAClick)
{
    for (const Qt::KeyboardModifiers held :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::AltModifier), Qt::ControlModifier | Qt::AltModifier}) {
        QTest::mouseClick(&button, Qt::LeftButton, held, Middle());
        ASSERT_EQ(clicked.size(), 1);
        EXPECT_EQ(clicked.takeFirst().at(0).value<Qt::KeyboardModifiers>(), held);
    }
    EXPECT_TRUE(asked.isEmpty());
}

TEST_F(ToolButton, HoldingItAsksForItsMenuOnceWithoutAClick)
{
    Down();
    ASSERT_TRUE(asked.wait());
    EXPECT_FALSE(button.isDown()) << "the menu may swallow the mouse going up";
    Up();
    EXPECT_EQ(asked.size(), 1);
    EXPECT_TRUE(clicked.isEmpty());
    Down();
    Up();
    EXPECT_EQ(clicked.size(), 1) << "the next click is one again";
}

TEST_F(ToolButton, AsksForItsMenuOnARightClickAndTheMenuKey)
{
    for (const QContextMenuEvent::Reason reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
        QContextMenuEvent event(reason, Middle(), button.mapToGlobal(Middle()));
        QApplication::sendEvent(&button, &event);
    }
    EXPECT_EQ(asked.size(), 2);
    QTest::mouseClick(&button, Qt::RightButton, {}, Middle());
    EXPECT_TRUE(clicked.isEmpty());
}

TEST_F(ToolButton, ReleasingItElsewhereDoesNothing)
{
    Down();
    QTest::mouseRelease(&button, Qt::LeftButton, {}, button.rect().bottomRight() + QPoint(50, 50));
    EXPECT_TRUE(clicked.isEmpty());
    Down();
    Up();
    EXPECT_EQ(clicked.size(), 1);
    EXPECT_TRUE(asked.isEmpty()) << "and is not held down";
}

TEST_F(ToolButton, ShowsItsNameAloneWithoutAnIcon)
{
    EXPECT_EQ(button.toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    const PluginButton plain{QIcon()};
    EXPECT_EQ(plain.toolButtonStyle(), Qt::ToolButtonTextOnly);
    EXPECT_EQ(plain.text(), "Symbols");
}
