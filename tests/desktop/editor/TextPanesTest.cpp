// Two parts of one text: a click in the other one makes the view come there.
#include "wren/desktop/editor/TextPanes.h"
#include "wren/desktop/editor/CodeView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QtTest/QTest>

namespace wren {
namespace {

using Sci = QsciScintillaBase;

std::string ManyLines()
{
    std::string lines;
    for (int line = 0; line < 200; ++line)
        lines += "int name" + std::to_string(line) + "; {\n}\n";
    return lines;
}

class TextPanesTest : public ::testing::Test {
protected:
    TextPanesTest()
    {
        panes.resize(800, 400);
        View().SetBytes(ManyLines());
        View().SetLanguageFor("/a.cpp");
        panes.show();
        QApplication::processEvents();
    }

    CodeView& View() { return *panes.View(); }
    CodeView& Other() { return *panes.Other(); }
    static long Ask(CodeView& view, unsigned message, long first = 0) { return ViewText(view).Send(message, first); }

    static QPoint PlaceOf(CodeView& view, long offset)
    {
        const ViewText text(view);
        return {static_cast<int>(text.Send(Sci::SCI_POINTXFROMPOSITION, 0, offset)) + 1,
                static_cast<int>(text.Send(Sci::SCI_POINTYFROMPOSITION, 0, offset)) + 2};
    }

    // In the other part. The events stay with it while the two exchange their places, but the mouse does not move.
    void Drag(const QPoint& from, const QPoint& to)
    {
        QWidget* pressed = Other().viewport();
        const QPoint screen = pressed->mapToGlobal(to);
        QTest::mousePress(pressed, Qt::LeftButton, Qt::NoModifier, from);
        const auto send = [&](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
            QMouseEvent event(type, pressed->mapFromGlobal(screen), screen, button, held, Qt::NoModifier);
            QApplication::sendEvent(pressed, &event);
        };
        send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    }

    TextPanes panes{new CodeView};
};

} // namespace

TEST_F(TextPanesTest, ShowsTheSameTextTwiceWhileItIsTyped)
{
    EXPECT_EQ(panes.IsSplit(), Split::None);
    panes.SetSplit(Split::Beside);
    EXPECT_EQ(panes.IsSplit(), Split::Beside);
    QTest::keyClicks(&View(), "new ");
    EXPECT_EQ(View().Bytes(), "new " + ManyLines());
    EXPECT_EQ(Other().Bytes(), View().Bytes());
    View().undo();
    EXPECT_EQ(Other().Bytes(), ManyLines());
    EXPECT_FALSE(View().IsModified());
}

TEST_F(TextPanesTest, ComesToAClickInTheOtherPart)
{
    panes.SetSplit(Split::Below);
    Other().ShowFromLine(100);
    View().GoTo(5);
    QApplication::processEvents();
    const QPoint place = Other().mapTo(&panes, QPoint(0, 0));
    const long clicked = Ask(Other(), Sci::SCI_POSITIONFROMLINE, 103) + 4;
    Drag(PlaceOf(Other(), clicked), PlaceOf(Other(), clicked));
    EXPECT_EQ(View().Caret(), clicked);
    EXPECT_EQ(View().FirstVisibleLine(), 100);
    EXPECT_EQ(View().mapTo(&panes, QPoint(0, 0)), place);
    EXPECT_EQ(Other().Caret(), 5);
    EXPECT_EQ(Other().FirstVisibleLine(), 0);
}

TEST_F(TextPanesTest, SelectsWithTheMouseWhereItWasPressed)
{
    panes.SetSplit(Split::Beside);
    Drag(PlaceOf(Other(), 4), PlaceOf(Other(), 9));
    EXPECT_EQ(ViewText(View()).Selected(), (Selection{4, 9}));
}

TEST_F(TextPanesTest, FoldsEachPartAlone)
{
    Ask(View(), Sci::SCI_COLOURISE, 0);
    panes.SetSplit(Split::Beside);
    View().Apply(FoldCommand::Toggle);
    EXPECT_FALSE(Ask(View(), Sci::SCI_GETLINEVISIBLE, 1));
    EXPECT_TRUE(Ask(Other(), Sci::SCI_GETLINEVISIBLE, 1));
    panes.Exchange();
    EXPECT_TRUE(Ask(View(), Sci::SCI_GETLINEVISIBLE, 1));
    EXPECT_FALSE(Ask(Other(), Sci::SCI_GETLINEVISIBLE, 1));
}

TEST_F(TextPanesTest, KeepsTheColoursWhenTheOtherPartGoes)
{
    ViewText(View()).Send(Sci::SCI_COLOURISE, 0, 100);
    const int style = ViewText(View()).StyleAt(0);
    EXPECT_NE(style, ViewText(View()).StyleAt(4));
    panes.SetSplit(Split::Beside);
    EXPECT_EQ(Ask(Other(), Sci::SCI_STYLEGETFORE, style), Ask(View(), Sci::SCI_STYLEGETFORE, style));
    EXPECT_EQ(ViewText(View()).StyleAt(0), style);
    panes.SetSplit(Split::None);
    EXPECT_EQ(ViewText(View()).StyleAt(0), style);
    EXPECT_EQ(View().Bytes(), ManyLines());
}

TEST_F(TextPanesTest, GivesTheOtherPartANewLookWhereItIs)
{
    panes.SetSplit(Split::Beside);
    Other().ShowFromLine(50);
    EditorLook look = View().Look();
    look.dark = !look.dark;
    View().SetLook(look);
    EXPECT_EQ(Other().Look().dark, look.dark);
    EXPECT_EQ(Other().FirstVisibleLine(), 50);
    EXPECT_EQ(Other().Bytes(), ManyLines());
}

} // namespace wren
