// Finding a text in the files of a project, from the editor.
#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/FinderActions.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/finder/FilesFindBar.h"
#include "wren/desktop/symbols/MatchesModel.h"
#include "wren/desktop/symbols/MatchesPanel.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

#include <algorithm>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class FindInFiles : public MeaningsStory {
protected:
    wren::FilesFindBar& Bar() { return TheEditor().Actions().finder->Bar(); }
    QLineEdit& Field(const char* name) { return *Bar().findChild<QLineEdit*>(name); }

    // What is listed once the search has ended, "file:line: text".
    std::vector<std::string> Listed()
    {
        EXPECT_TRUE(Until([this] { return Symbols().IsIdle(); }));
        const wren::MatchesModel& model = Symbols().Matches().Model();
        std::vector<std::string> rows;
        for (QModelIndex at = model.Next({}, false); at.isValid(); at = model.Next(at, false)) {
            const wren::FoundPlace& place = *model.PlaceAt(at);
            rows.push_back(place.shown + ":" + std::to_string(place.line) + ": " + place.source);
        }
        std::ranges::sort(rows);
        return rows;
    }
};

} // namespace

TEST_F(FindInFiles, TheNameAtTheCaretIsFoundInAllFilesOfTheProject)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Pa|int();\n}\n");
    Press("Ctrl+Shift+F");
    EXPECT_EQ(Field("text").text(), "Paint");
    QTest::keyClick(&Field("text"), Qt::Key_Return);
    EXPECT_THAT(Listed(), ::testing::Contains(HasSubstr("shapes.cpp:")));
    EXPECT_THAT(Listed(), ::testing::Contains("draw.cpp:4: text.Paint();"));
    EXPECT_THAT(Symbols().Matches().Title().toStdString(), HasSubstr("matches of \u201cPaint\u201d"));
}

TEST_F(FindInFiles, TheFirstStepGoesToTheFirstMatch)
{
    StartAt("|int other;\n");
    home.Write("project/sub/needle.c", "int needle;\nint needles;\n");
    Press("Ctrl+Shift+F");
    Field("text").setText("needle");
    QTest::keyClick(&Field("text"), Qt::Key_Return);
    ASSERT_THAT(Listed(), ElementsAre("sub/needle.c:1: int needle;", "sub/needle.c:2: int needles;"));
    Press("F4");
    Settle();
    EXPECT_EQ(Place(), "needle.c:1:5");
    Press("F4");
    EXPECT_EQ(Place(), "needle.c:2:5");
}

TEST_F(FindInFiles, FieldsChooseFilesAndFolders)
{
    StartAt("int needle;|\n");
    home.Write("project/sub/needle.txt", "a needle\n");
    Press("Ctrl+Shift+F");
    Field("text").setText("needle");
    Field("files").setText("*.txt, !other/");
    QTest::keyClick(&Field("files"), Qt::Key_Return);
    EXPECT_THAT(Listed(), ElementsAre("sub/needle.txt:1: a needle"));
    Field("files").clear();
    Field("folder").setText("sub");
    QTest::keyClick(&Field("folder"), Qt::Key_Return);
    EXPECT_THAT(Listed(), ElementsAre("needle.txt:1: a needle"));
}

TEST_F(FindInFiles, AnUnsavedTextCountsInsteadOfItsFile)
{
    StartAt("int before;\n|");
    Type("int unsavedName");
    Press("Ctrl+Shift+F");
    QTest::keyClick(&Field("text"), Qt::Key_Return);
    EXPECT_THAT(Listed(), ElementsAre("draw.cpp:2: int unsavedName"));
}

TEST_F(FindInFiles, AWrongExpressionIsSaidBesideTheFields)
{
    StartAt("|\n");
    Press("Ctrl+Shift+F");
    Field("text").setText("a(b");
    Bar().findChild<QToolButton*>("expression")->setChecked(true);
    QTest::keyClick(&Field("text"), Qt::Key_Return);
    EXPECT_THAT(Bar().Problem().toStdString(), HasSubstr("character 4"));
    Field("text").setText("zz[z]");
    QTest::keyClick(&Field("text"), Qt::Key_Return);
    EXPECT_EQ(Bar().Problem(), "");
    EXPECT_THAT(Listed(), IsEmpty());
    Field("folder").setText("/no/such/directory");
    QTest::keyClick(&Field("folder"), Qt::Key_Return);
    EXPECT_TRUE(Until([this] { return Bar().Problem().contains("cannot read"); }));
}

TEST_F(FindInFiles, EscapeGivesTheKeyboardBackToTheText)
{
    StartAt("int name|;\n");
    Press("Ctrl+Shift+F");
    QTest::keyClick(&Field("text"), Qt::Key_Escape);
    EXPECT_FALSE(Bar().isVisible());
    Type("x");
    EXPECT_EQ(Text(), "int namex;\n");
}
