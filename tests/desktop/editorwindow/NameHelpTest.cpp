#include "wren/desktop/NameHelp.h"
#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/symbols/MatchesPanel.h"

#include <QApplication>
#include <QHelpEvent>
#include <QTest>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class NameHelp : public MeaningsStory {
protected:
    QPoint PointOf(long offset)
    {
        const BPoint left = View().BaselineAt(offset);
        const BPoint right = View().BaselineAt(offset + 1);
        const QPoint middle(static_cast<int>((left.x + right.x) / 2), static_cast<int>(left.y) - 3);
        return View().viewport()->mapFromGlobal(middle);
    }
    void RestOn(long offset)
    {
        const QPoint point = PointOf(offset);
        QHelpEvent rest(QEvent::ToolTip, point, View().viewport()->mapToGlobal(point));
        QApplication::sendEvent(View().viewport(), &rest);
        Answered();
    }
    void MoveTo(long offset, Qt::KeyboardModifiers held)
    {
        const QPoint point = PointOf(offset);
        QMouseEvent move(QEvent::MouseMove, point, View().viewport()->mapToGlobal(point), Qt::NoButton, Qt::NoButton,
                         held);
        QApplication::sendEvent(View().viewport(), &move);
    }
    static std::string TextOf(const wren::NameCard* card)
    {
        return card == nullptr || !card->isVisible() ? "" : card->text().toStdString();
    }
    std::string Meaning() { return TextOf(Symbols().Help().Meaning()); }
    std::string Call() { return TextOf(Symbols().Help().Call()); }
    long Find(const char* text) const { return static_cast<long>(Text().find(text)); }
    std::string Underlined()
    {
        std::string underlined;
        const std::string text = Text();
        for (size_t at = 0; at < text.size(); ++at)
            if (View().SendScintilla(QsciScintilla::SCI_INDICATORVALUEAT,
                                     static_cast<unsigned long>(wren::PointedName::kIndicator),
                                     static_cast<long>(at)) != 0)
                underlined += text[at];
        return underlined;
    }
};

} // namespace

TEST_F(NameHelp, ARestOfTheMouseShowsDeclarationCommentAndPlace)
{
    home.Write("project/pen.h", "// Draws <b>thick</b> lines.\nint Draw(int width);\n");
    StartAt("#include \"pen.h\"\nint x = Draw(1);\n|");
    RestOn(Find("Draw"));
    EXPECT_THAT(Meaning(), AllOf(HasSubstr("int Draw(int width)"), HasSubstr("&lt;b&gt;thick"), HasSubstr("pen.h:2")));
    EXPECT_EQ(QApplication::focusWidget(), &View());
    MoveTo(Find("x ="), Qt::NoModifier);
    EXPECT_EQ(Meaning(), "") << "the mouse has left the name";
}

TEST_F(NameHelp, AKeyShowsWhatTheNameAtTheCaretMeansAndTypingHidesIt)
{
    StartAt("#define LIMIT (1 << 4)\nint x = LI|MIT;\n");
    Ask("Ctrl+I");
    EXPECT_THAT(Meaning(), AllOf(HasSubstr("LIMIT (1 &lt;&lt; 4)"), HasSubstr("= 16")));
    Press("Escape");
    EXPECT_EQ(Meaning(), "");
    Ask("Ctrl+I");
    EXPECT_NE(Meaning(), "");
    Press("Left");
    EXPECT_EQ(Meaning(), "");
}

TEST_F(NameHelp, NothingIsSaidOfWhatIsNoName)
{
    StartAt("int x = 1; // Draw\n|");
    RestOn(Find("Draw"));
    EXPECT_EQ(Meaning(), "");
    RestOn(Find("int"));
    EXPECT_EQ(Meaning(), "");
    Ask("Ctrl+I");
    EXPECT_EQ(Status(), "Nothing is known about a name at the caret.");
}

TEST_F(NameHelp, WhatACallTakesFollowsTheArguments)
{
    StartAt("int Mix(int red, int green);\nint Mix(int grey);\nint Run()\n{\n    return Mix|\n}\n");
    Type("(");
    Answered();
    EXPECT_THAT(Call(), AllOf(HasSubstr("int Mix(<b>int grey</b>)"), HasSubstr("int Mix(int red, int green)")));
    Type("1, ");
    Answered();
    EXPECT_THAT(Call(), HasSubstr("<b>int green</b>"));
    Type("2)");
    Answered();
    EXPECT_EQ(Call(), "") << "the call has ended";
    Press("Left");
    Ask("Ctrl+Shift+Space");
    EXPECT_THAT(Call(), HasSubstr("<b>int green</b>"));
    Press("Escape");
    EXPECT_EQ(Call(), "");
}

TEST_F(NameHelp, ControlUnderlinesTheNameUnderTheMouseAndOnlyNames)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Paint(); // Paint\n}\n|");
    MoveTo(Find("Paint"), Qt::ControlModifier);
    EXPECT_EQ(Underlined(), "Paint");
    MoveTo(Find("void"), Qt::ControlModifier);
    EXPECT_EQ(Underlined(), "") << "a keyword";
    MoveTo(Find("// Paint") + 4, Qt::ControlModifier);
    EXPECT_EQ(Underlined(), "") << "a comment";
    MoveTo(Find("Paint"), Qt::NoModifier);
    EXPECT_EQ(Underlined(), "");
}

TEST_F(NameHelp, AControlClickGoesToTheDefinitionAndBackLeadsToTheName)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Paint();\n}\n|");
    ClickText(Find("Paint") + 2, Qt::ControlModifier);
    Answered();
    EXPECT_EQ(Place(), "shapes.cpp:4:12");
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.cpp:4:10");
}

TEST_F(NameHelp, AControlClickIsThePluginsWhenTheUserChoseThat)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Paint();\n}\n|");
    InPreferences([](QWidget& dialog) { ChooseIn(dialog, "lookupClick", "Control-click, Control-Shift-click"); });
    MoveTo(Find("Paint"), Qt::ControlModifier);
    EXPECT_EQ(Underlined(), "");
}
