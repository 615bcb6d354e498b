// The menu of the text.
#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Not;

namespace {

class TextMenu : public MeaningsStory {
protected:
    // As the right button asks for it, over the character behind the offset.
    QMenu& Open(long offset, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse)
    {
        const auto point = [&](unsigned message) {
            return static_cast<int>(View().SendScintilla(message, 0UL, offset));
        };
        const QPoint at(point(QsciScintilla::SCI_POINTXFROMPOSITION) + 2,
                        point(QsciScintilla::SCI_POINTYFROMPOSITION) + 2);
        QContextMenuEvent event(reason, at, View().viewport()->mapToGlobal(at));
        QApplication::sendEvent(View().viewport(), &event);
        return *TheEditor().Window().findChild<QMenu*>("textMenu");
    }
    static std::vector<std::string> Items(const QMenu& menu)
    {
        std::vector<std::string> items;
        for (const QAction* action : menu.actions())
            items.push_back(action->text().remove('&').section('\t', 0, 0).toStdString());
        return items;
    }
    static void Choose(QMenu& menu, const std::string& item)
    {
        const QList<QAction*> actions = menu.actions();
        menu.close();
        for (QAction* action : actions)
            if (action->text().remove('&').section('\t', 0, 0).toStdString() == item)
                return action->trigger();
        ADD_FAILURE() << item;
    }
};

} // namespace

TEST_F(TextMenu, IsAboutTheNameUnderTheMouse)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Paint();\n}\n|");
    QMenu& menu = Open(54);
    EXPECT_EQ(Place(), "draw.cpp:4:11");
    EXPECT_THAT(Items(menu), AllOf(Contains("Definition"), Contains("References"), Contains("Copy"),
                                   Contains("Look up declaration")));
    Choose(menu, "Definition");
    Answered();
    EXPECT_EQ(Place(), "shapes.cpp:4:12");
}

TEST_F(TextMenu, KeepsTheSelectionThatItIsOpenedOver)
{
    understandsNames = false;
    Start({home.Write("a.c", "one two three")});
    View().setSelection(0, 4, 0, 7);
    QMenu& menu = Open(5);
    EXPECT_THAT(Items(menu), AllOf(Contains("Cut"), Not(Contains("Definition"))));
    Choose(menu, "Cut");
    EXPECT_EQ(Text(), "one  three");
}

TEST_F(TextMenu, OpensAtTheCaretByAKey)
{
    Start({home.Write("a.c", "one two three")});
    View().GoTo(4);
    QMenu& menu = Open(9, QContextMenuEvent::Keyboard);
    EXPECT_EQ(View().Caret(), 4);
    menu.close();
}
