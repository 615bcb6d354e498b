#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/symbols/MatchesModel.h"
#include "wren/desktop/symbols/MatchesPanel.h"
#include "wren/desktop/symbols/OutlinePanel.h"
#include "wren/desktop/symbols/Palette.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTreeView>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class Meanings : public MeaningsStory {
protected:
    wren::Palette& Palette() { return Symbols().Palettes().ThePalette(); }
    QLineEdit& Field() { return *Palette().findChild<QLineEdit*>(); }
    // Types letters into the palette until it lists something: what an index has comes when it is there.
    std::vector<std::string> Offered(const char* letters)
    {
        QTest::keyClicks(&Field(), letters);
        EXPECT_TRUE(Until([this] { return Symbols().IsIdle() && !Palette().Items().empty(); }));
        std::vector<std::string> offered;
        for (const wren::PaletteItem& item : Palette().Items())
            offered.push_back(item.detail + "|" + item.name + "|" + item.where);
        return offered;
    }
    std::vector<std::string> Listed()
    {
        const wren::MatchesModel& model = Symbols().Matches().Model();
        std::vector<std::string> rows;
        for (QModelIndex at = model.Next({}, false); at.isValid(); at = model.Next(at, false))
            rows.push_back(model.PlaceAt(at)->shown + ":" + std::to_string(model.PlaceAt(at)->line));
        return rows;
    }
};

} // namespace

TEST_F(Meanings, TheDefinitionOfAMemberIsThatOfItsReceiversClass)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Pa|int();\n}\n");
    Ask("F12");
    EXPECT_EQ(Place(), "shapes.cpp:4:12");
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.cpp:4:12");
}

TEST_F(Meanings, TheDeclarationIsInTheHeader)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Pa|int();\n}\n");
    Ask("Ctrl+F12");
    EXPECT_EQ(Place(), "shapes.h:8:10");
}

TEST_F(Meanings, ALocalThatWasJustTypedIsFound)
{
    StartAt("void Draw()\n{\n|}\n");
    Type("int radius = 1;\nradius");
    Ask("F12");
    EXPECT_THAT(Place(), HasSubstr(":3:5"));
}

TEST_F(Meanings, WhatAnotherUnsavedTextDefinesIsFound)
{
    StartAt("#include \"other.h\"\nvoid Draw() { Turn|ed(); }\n");
    Start({home.Write("project/draw.cpp", "#include \"other.h\"\nvoid Draw() { Turned(); }\n"),
           home.Write("project/other.h", "\n")});
    Type("inline void Turned() {}\n");
    Press("Ctrl+PgUp");
    View().GoTo(35);
    Ask("F12");
    EXPECT_THAT(Place(), HasSubstr("other.h *:1:13"));
}

TEST_F(Meanings, SeveralPlacesAreListedAndEnterGoesToOne)
{
    StartAt("void Run() { Pain|t(); }\n");
    Ask("F12");
    ASSERT_TRUE(Symbols().Matches().isVisible());
    EXPECT_THAT(Symbols().Matches().Title().toStdString(), HasSubstr("found by the name alone"));
    ASSERT_THAT(Listed(), ElementsAre("shapes.cpp:2", "shapes.cpp:4"));
    auto* tree = Symbols().Matches().findChild<QTreeView*>();
    QTest::keyClick(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Place(), "shapes.cpp:4:12");
    EXPECT_TRUE(Symbols().Matches().isVisible());
}

TEST_F(Meanings, ReferencesAreListedByFileAndStepped)
{
    StartAt("#include \"shapes.h\"\nint Size(Shape& shape) { return shape.Ar|ea(); }\n");
    Ask("Shift+F12");
    ASSERT_TRUE(Until([this] { return Listed().size() >= 3; }));
    EXPECT_THAT(Listed(), ElementsAre("draw.cpp:2", "shapes.cpp:3", "shapes.h:4"));
    EXPECT_EQ(Symbols().Matches().Title().toStdString(), "3 references to \u201cArea\u201d, in 3 files");
    Press("F4");
    EXPECT_EQ(Place(), "shapes.cpp:3:12");
    Press("F4");
    EXPECT_EQ(Place(), "shapes.h:4:9");
    Press("Shift+F4");
    EXPECT_EQ(Place(), "shapes.cpp:3:12");
}

TEST_F(Meanings, StepsThroughReferencesBeginAtTheCaret)
{
    StartAt("#include \"shapes.h\"\nint Twice(Shape& a) { return a.Area() + a.Ar|ea(); }\nint Once(Shape& a) { return "
            "a.Area(); }\n");
    Ask("Shift+F12");
    ASSERT_TRUE(Until([this] { return Listed().size() >= 5; }));
    Press("F4");
    EXPECT_EQ(Place(), "draw.cpp:3:31") << "the reference after the one at the caret";
    Press("Shift+F4");
    Press("Shift+F4");
    EXPECT_EQ(Place(), "draw.cpp:2:32");
}

TEST_F(Meanings, AltOGoesFromASourceToItsHeaderAndBack)
{
    home.Write("project/include/draw.h", "void Draw();\n");
    StartAt("void Draw()\n{\n|}\n");
    Ask("Alt+O");
    EXPECT_EQ(Place(), "draw.h:1:1");
    Ask("Alt+O");
    EXPECT_EQ(Place(), "draw.cpp:3:1") << "where the caret was";
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.h:1:1");
}

TEST_F(Meanings, ASourceWithoutAHeaderSaysSo)
{
    StartAt("int ownName;|\n");
    Ask("Alt+O");
    EXPECT_EQ(CurrentTab(), "draw.cpp");
    EXPECT_EQ(Status(), "No other file goes with this one.");
}

TEST_F(Meanings, TypingNarrowsTheListAndEscapeReturnsToTheText)
{
    StartAt("#include \"shapes.h\"\nint Size(Shape& shape) { return shape.Ar|ea(); }\n");
    Ask("Shift+F12");
    ASSERT_TRUE(Until([this] { return Listed().size() >= 3; }));
    auto* tree = Symbols().Matches().findChild<QTreeView*>();
    tree->setFocus();
    QTest::keyClicks(tree, "s");
    QTest::keyClicks(Symbols().Matches().findChild<QLineEdit*>(), "hapes.h");
    EXPECT_THAT(Listed(), ElementsAre("shapes.h:4"));
    EXPECT_THAT(Symbols().Matches().Title().toStdString(), HasSubstr("1 of 3"));
    QTest::keyClick(Symbols().Matches().findChild<QLineEdit*>(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &View());
}

TEST_F(Meanings, WhatIsNotFoundIsSaid)
{
    StartAt("void Run() { Nowhe|re(); }\n");
    Ask("F12");
    EXPECT_EQ(Status(),
              "No definition of \u201cNowhere\u201d was found in this text, its project and the system's headers.");
    View().GoTo(11);
    Type("  ");
    View().GoTo(12);
    Ask("F12");
    EXPECT_EQ(Status(), "There is no name at the caret.");
}

TEST_F(Meanings, ASymbolIsReachedByAFewLetters)
{
    StartAt("|\n");
    Press("Ctrl+T");
    EXPECT_THAT(Offered("pnt"), ElementsAre("Shape|Paint|shapes.cpp:2", "Text|Paint|shapes.cpp:4",
                                            "Shape|Paint|shapes.h:3", "Text|Paint|shapes.h:8"));
    QTest::keyClick(&Field(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &View());
    EXPECT_EQ(Place(), "draw.cpp:1:1");
}

TEST_F(Meanings, ASymbolIsReachedByItsScopeAndLetters)
{
    StartAt("|\n");
    Press("Ctrl+T");
    EXPECT_THAT(Offered("Shape::Ar"), ElementsAre("Shape|Area|shapes.cpp:3", "Shape|Area|shapes.h:4"));
    QTest::keyClick(&Field(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Place(), "shapes.cpp:3:12");
    EXPECT_EQ(QApplication::focusWidget(), &View());
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.cpp:1:1");
}

TEST_F(Meanings, AFileIsReachedByLettersAndALine)
{
    StartAt("|\n");
    Press("Ctrl+P");
    ASSERT_TRUE(Until([this] { return !Palette().Items().empty(); }));
    EXPECT_EQ(Palette().Items().front().name, "draw.cpp") << "the files of late, without letters";
    EXPECT_THAT(Offered("shh:4"), ElementsAre("|shapes.h|"));
    QTest::keyClick(&Field(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Place(), "shapes.h:4:1");
}

TEST_F(Meanings, OfFilesThatMatchAlikeTheOneBesideTheTextComesFirst)
{
    home.Write("project/near.c", "int a;\n");
    home.Write("project/parts/near.c", "int b;\n");
    home.Write("project/parts/deep/near.c", "int c;\n");
    Start({home.Write("project/parts/deep/text.c", "int text;\n")});
    ASSERT_TRUE(Until([this] { return Symbols().Engine().Updates() > 0; }));
    Press("Ctrl+P");
    EXPECT_THAT(Offered("near"), ElementsAre("parts/deep/|near.c|", "|near.c|", "parts/|near.c|"));
}

TEST_F(Meanings, SymbolsOfTheTextAreListedAsItIsNow)
{
    StartAt("class Pen {\n    void Draw();\n};\n|");
    Type("int Last() { return 1; }\n");
    Press("Ctrl+Shift+O");
    EXPECT_THAT(Offered(""), ElementsAre("|Pen|1", "Pen|Draw|2", "|Last|4"));
    EXPECT_EQ(Palette().Items()[1].depth, 1);
    QTest::keyClicks(&Field(), "La");
    QTest::keyClick(&Field(), Qt::Key_Return);
    Answered();
}

TEST_F(Meanings, ThePluginAloneHasNoneOfIt)
{
    understandsNames = false;
    Start({home.Write("project/draw.cpp", "void Run() { Run(); }\n")});
    EXPECT_EQ(TheEditor().Actions().symbols, nullptr);
    Press("Ctrl+T");
    EXPECT_EQ(TheEditor().Window().findChild<wren::Palette*>(), nullptr);
}

TEST_F(Meanings, TheOutlineShowsTheTextAsItIsAndFollowsTheCaret)
{
    StartAt("class Pen {\n    void Draw();\n};\n|\nint First() { return 1; }\n");
    Press("Ctrl+Shift+L");
    Answered();
    wren::OutlinePanel& outline = Symbols().Outlines().Panel();
    const auto names = [&] {
        std::vector<std::string> rows;
        for (const wren::PaletteItem& item : outline.Items())
            rows.push_back(item.name);
        return rows;
    };
    EXPECT_THAT(names(), ElementsAre("Pen", "Draw", "First"));
    EXPECT_EQ(outline.Marked(), -1) << "the caret is between two";
    View().GoTo(16);
    Type(" ");
    EXPECT_EQ(outline.Marked(), 1);
    View().GoTo(35);
    Type("int New();\n");
    ASSERT_TRUE(Until([&] { return names().size() == 4; }));
    EXPECT_THAT(names(), ElementsAre("Pen", "Draw", "New", "First"));
}

TEST_F(Meanings, AClickOrEnterInTheOutlineGoesToTheSymbol)
{
    StartAt("|class Pen {\n    void Draw();\n};\nint First() { return 1; }\n");
    Press("Ctrl+Shift+L");
    Answered();
    auto* filter = Symbols().Outlines().Panel().findChild<QLineEdit*>();
    EXPECT_EQ(QApplication::focusWidget(), filter);
    QTest::keyClicks(filter, "fir");
    QTest::keyClick(filter, Qt::Key_Down);
    QTest::keyClick(filter, Qt::Key_Return);
    EXPECT_EQ(Place(), "draw.cpp:4:5");
    EXPECT_EQ(QApplication::focusWidget(), &View());
    Press("Ctrl+Shift+L");
    EXPECT_FALSE(Symbols().Outlines().Panel().isVisible());
}

TEST_F(Meanings, EnterWaitsForTheAnswerToTheLatestLetters)
{
    StartAt("|\n");
    Press("Ctrl+T");
    QTest::keyClicks(&Field(), "Text::Paint");
    QTest::keyClick(&Field(), Qt::Key_Return);
    ASSERT_TRUE(Until([this] { return !Palette().isVisible(); }));
    EXPECT_EQ(Place(), "shapes.cpp:4:12");
}
