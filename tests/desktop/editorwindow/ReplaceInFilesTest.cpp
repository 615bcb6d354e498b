// Replacing a text in the files of a project, from the editor.
#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/FinderActions.h"
#include "wren/desktop/finder/FilesFindBar.h"
#include "wren/desktop/finder/ReplacePanel.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <filesystem>

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

namespace fs = std::filesystem;

class ReplaceInFiles : public MeaningsStory {
protected:
    wren::FinderActions& Finder() { return *TheEditor().Actions().finder; }
    wren::ReplacePanel& Panel() { return Finder().Replacing().Panel(); }
    QLineEdit& Field(const char* name) { return *Finder().Bar().findChild<QLineEdit*>(name); }

    // Starts in a text without the words that are replaced.
    void StartBeside()
    {
        StartAt("int other;|\n");
        Press("Ctrl+Shift+H");
    }
    void Preview(const char* what, const char* with, bool isExpression = false)
    {
        Field("text").setText(what);
        Finder().Bar().findChild<QToolButton*>("expression")->setChecked(isExpression);
        Finder().Bar().findChild<QToolButton*>("case")->setChecked(true);
        Field("with").setText(with);
        Field("with").setFocus();
        QTest::keyClick(&Field("with"), Qt::Key_Return);
        ASSERT_TRUE(Until([this] { return Symbols().IsIdle(); }));
    }
    void Replace()
    {
        Panel().findChild<QToolButton*>("replace")->click();
        ASSERT_TRUE(Until([this] { return !Finder().Replacing().IsApplying(); }));
        Settle();
    }
    QModelIndex File(const std::string& shown)
    {
        const wren::ReplaceModel& model = Panel().Model();
        for (int row = 0; row < model.rowCount({}); ++row)
            if (model.FileAt(model.index(row, 0, {})).shown == shown)
                return model.index(row, 0, {});
        ADD_FAILURE() << shown;
        return {};
    }
    // "file:line: before -> after"
    std::vector<std::string> Listed()
    {
        const wren::ReplaceModel& model = Panel().Model();
        std::vector<std::string> rows;
        for (int file = 0; file < model.rowCount({}); ++file)
            for (const wren::FoundLine& line : model.FileAt(model.index(file, 0, {})).lines)
                rows.push_back(model.FileAt(model.index(file, 0, {})).shown + ":" + std::to_string(line.line) + ": " +
                               line.source + " -> " + SourceAfter(line));
        return rows;
    }
    void Uncheck(const QModelIndex& index)
    {
        EXPECT_TRUE(Panel().Model().setData(index, Qt::Unchecked, Qt::CheckStateRole));
    }
};

} // namespace

TEST_F(ReplaceInFiles, EachLineIsShownBeforeAndAfterAndOnlyWhatIsCheckedIsReplaced)
{
    const std::string one = home.Write("project/one.txt", "old old\nolder\n");
    const std::string two = home.Write("project/two.txt", "an old one\r\n");
    const std::string three = home.Write("project/three.txt", "old\n");
    StartBeside();
    Preview("old", "new");
    EXPECT_THAT(Listed(), UnorderedElementsAre("one.txt:1: old old -> new old", "one.txt:1: old old -> old new",
                                               "one.txt:2: older -> newer", "two.txt:1: an old one -> an new one",
                                               "three.txt:1: old -> new"));
    const QModelIndex file = File("one.txt");
    Uncheck(Panel().Model().index(1, 0, file));
    EXPECT_EQ(Panel().Model().data(file, Qt::CheckStateRole), Qt::PartiallyChecked);
    Uncheck(File("three.txt"));
    EXPECT_EQ(Panel().Title(), "3 of 5 replacements in 3 files");
    EXPECT_EQ(Content(one), "old old\nolder\n") << "only shown yet";
    Replace();
    EXPECT_EQ(Content(one), "new old\nnewer\n");
    EXPECT_EQ(Content(two), "an new one\r\n");
    EXPECT_EQ(Content(three), "old\n");
    EXPECT_THAT(Panel().Title().toStdString(), HasSubstr("Replaced 3 matches in 2 files"));
    EXPECT_THAT(Notice(), IsEmpty());
}

TEST_F(ReplaceInFiles, AnOpenTextIsReplacedInOneStepThatIsUndone)
{
    StartAt("int old;\nint unsaved_old;\n|");
    const std::string file = home / "project/draw.cpp";
    const std::string before = Content(file);
    Type("old");
    Press("Ctrl+Shift+H");
    Preview("old", "much newer");
    Replace();
    EXPECT_EQ(Text(), "int much newer;\nint unsaved_much newer;\nmuch newer");
    EXPECT_EQ(Content(file), before) << "not saved yet";
    EXPECT_EQ(CurrentTab(), "draw.cpp *");
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "int old;\nint unsaved_old;\nold");
}

TEST_F(ReplaceInFiles, AMarkBeforeTheTextStays)
{
    const std::string closed = home.Write("project/closed.txt", "\xef\xbb\xbfold\n");
    StartBeside();
    TheEditor().Actions().documents.Open(home.Write("project/open.txt", "\xef\xbb\xbfold\n"));
    Settle();
    Preview("^old", "new", true);
    EXPECT_THAT(Listed(), UnorderedElementsAre("closed.txt:1: old -> new", "open.txt:1: old -> new"));
    Replace();
    EXPECT_EQ(Content(closed), "\xef\xbb\xbfnew\n");
    EXPECT_EQ(Text(), "new\n");
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "project/open.txt"), "\xef\xbb\xbfnew\n");
}

TEST_F(ReplaceInFiles, GroupsOfAnExpressionAreTakenOver)
{
    const std::string file = home.Write("project/calls.txt", "put(first, second)\r\n");
    StartBeside();
    Preview("put\\((\\w+), (\\w+)\\)", "take($2,\\n$1)", true);
    Replace();
    EXPECT_EQ(Content(file), "take(second,\r\nfirst)\r\n") << "with the file's line ends";
}

TEST_F(ReplaceInFiles, AFileThatHasChangedSinceIsLeftAndNamed)
{
    const std::string file = home.Write("project/one.txt", "needle\n");
    const std::string other = home.Write("project/two.txt", "needle\n");
    StartBeside();
    Preview("needle", "pin");
    home.Write("project/one.txt", "x needle\n");
    Replace();
    EXPECT_EQ(Content(file), "x needle\n");
    EXPECT_EQ(Content(other), "pin\n");
    EXPECT_EQ(Notice(), "Nothing was replaced: " + file + " has changed since the search.");
}

TEST_F(ReplaceInFiles, ALinkThatCameMeanwhileIsNotFollowed)
{
    const std::string file = home.Write("project/sub/one.txt", "needle\n");
    const std::string outside = home.Write("outside/one.txt", "needle\n");
    StartBeside();
    Preview("needle", "pin");
    fs::remove_all(home / "project/sub");
    fs::create_directory_symlink(home / "outside", home / "project/sub");
    Replace();
    EXPECT_EQ(Content(outside), "needle\n");
    EXPECT_THAT(Notice(), HasSubstr("is no longer a file of the searched directory"));
}

TEST_F(ReplaceInFiles, PermissionsAndEncodingsStay)
{
    const std::string program = home.Write("project/run.sh", "needle\n");
    fs::permissions(program, fs::perms::owner_all | fs::perms::group_exec);
    const std::string latin = home.Write("project/latin.txt", "caf\xe9 needle\n");
    StartBeside();
    Preview("needle", "n\u00e4del");
    Replace();
    EXPECT_EQ(Content(program), "n\u00e4del\n");
    EXPECT_EQ(fs::status(program).permissions(), fs::perms::owner_all | fs::perms::group_exec);
    EXPECT_EQ(Content(latin), "caf\xe9 needle\n");
    EXPECT_EQ(Notice(), "Nothing was replaced: " + latin + " is not UTF-8, as the replacement is.");
    Preview("needle", "pin");
    Replace();
    EXPECT_EQ(Content(latin), "caf\xe9 pin\n");
}

TEST_F(ReplaceInFiles, EnterGoesToThePlaceAndSpaceSetsTheMark)
{
    home.Write("project/one.txt", "first\nthe needle\n");
    StartBeside();
    Preview("needle", "pin");
    auto* tree = Panel().findChild<QTreeView*>();
    EXPECT_EQ(QApplication::focusWidget(), tree);
    QTest::keyClick(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Space);
    EXPECT_EQ(Panel().Title(), "0 of 1 replacements in 1 files");
    EXPECT_FALSE(Panel().findChild<QToolButton*>("replace")->isEnabled());
    QTest::keyClick(tree, Qt::Key_Return);
    EXPECT_EQ(Place(), "one.txt:2:5");
}
