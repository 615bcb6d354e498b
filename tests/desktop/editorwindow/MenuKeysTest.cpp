#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/desktop/MainWindow.h"

#include <QAction>
#include <QKeySequenceEdit>
#include <QMenuBar>
#include <QTableWidget>
#include <QTest>

#include <set>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

namespace {

class MenuKeys : public EditorStory {
protected:
    void StartWith(const char* settings)
    {
        home.Write(".config/wren/settings", settings);
        Start({home.Write("a.c", "int a;\n"), home.Write("b.c", "int b;\n")});
    }
    void CollectIds(const QList<QAction*>& actions, std::vector<std::string>& ids)
    {
        for (const QAction* action : actions) {
            if (action->menu() != nullptr)
                CollectIds(action->menu()->actions(), ids);
            else if (!action->isSeparator())
                ids.push_back(action->objectName().toStdString());
        }
    }
    std::vector<std::string> Ids()
    {
        std::vector<std::string> ids;
        CollectIds(TheEditor().Window().menuBar()->actions(), ids);
        return ids;
    }
    static QKeySequenceEdit* Field(const QWidget& dialog, const char* title)
    {
        const auto* table = dialog.findChild<QTableWidget*>();
        for (int row = 0; row < table->rowCount(); ++row)
            if (table->item(row, 0)->text() == title)
                return qobject_cast<QKeySequenceEdit*>(table->cellWidget(row, 1));
        return nullptr;
    }
};

} // namespace

TEST_F(MenuKeys, AreSetInThePreferencesAndStored)
{
    StartWith("");
    InPreferences([](QWidget& dialog) {
        ASSERT_NE(Field(dialog, "File: Close"), nullptr);
        QTest::keyClick(Field(dialog, "File: Close"), Qt::Key_F8);
    });
    EXPECT_THAT(Content(SettingsFile()), HasSubstr("WrenMenuKeys File.Close=F8\n"));
    Press("Ctrl+W");
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c"));
    Press("F8");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
}

TEST_F(MenuKeys, AreReadAtTheStart)
{
    StartWith("WrenMenuKeys File.Close=Alt+C,F8 Tabs.CloseOthers=Ctrl+Alt+W\n");
    Press("Ctrl+Alt+W");
    EXPECT_THAT(Tabs(), ElementsAre("b.c"));
    Press("Alt+C");
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
}

TEST_F(MenuKeys, AChosenKeyIsTakenFromTheItemThatUsuallyHasIt)
{
    StartWith("WrenMenuKeys Tabs.CloseOthers=Ctrl+W\n");
    Press("Ctrl+W");
    EXPECT_THAT(Tabs(), ElementsAre("b.c"));
    Press("Ctrl+W");
    EXPECT_THAT(Tabs(), ElementsAre("b.c")) << "the only one has no others";
}

TEST_F(MenuKeys, ACommandTakesAKeyEvenFromAnItemThatWasGivenIt)
{
    StartWith("WrenMenuKeys File.Close=F8\nWrenKeys GoBack=F8\n");
    Press("F8");
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c"));
}

TEST_F(MenuKeys, AnItemWithoutKeysHasNone)
{
    StartWith("WrenMenuKeys File.Close=\n");
    Press("Ctrl+W");
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c"));
    Choose("File", "Close");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
}

TEST_F(MenuKeys, AnItemOfAnotherVersionKeepsItsLine)
{
    StartWith("WrenMenuKeys No.SuchItem=F8\n");
    InPreferences([](QWidget& dialog) { QTest::keyClick(Field(dialog, "File: New"), Qt::Key_F7); });
    EXPECT_THAT(Content(SettingsFile()), HasSubstr("WrenMenuKeys File.New=F7 No.SuchItem=F8\n"));
}

// Settings name the items by these, so that a renamed label must keep the identifier.
TEST_F(MenuKeys, EachItemHasAnIdentifierOfItsOwn)
{
    understandsNames = true;
    Start({home.Write("a.c", "")});
    const std::vector<std::string> ids = Ids();
    EXPECT_THAT(ids, Not(::testing::Contains("")));
    EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
    EXPECT_THAT(ids, IsSupersetOf({"File.New",
                                   "File.Open",
                                   "File.Save",
                                   "File.SaveAs",
                                   "File.SaveAll",
                                   "File.Revert",
                                   "File.Close",
                                   "File.Quit",
                                   "Tabs.CloseOthers",
                                   "Tabs.CloseToTheRight",
                                   "Tabs.ReopenClosedFile",
                                   "Tabs.CopyPath",
                                   "Edit.Undo",
                                   "Edit.Redo",
                                   "Edit.Cut",
                                   "Edit.Copy",
                                   "Edit.Paste",
                                   "Edit.SelectAll",
                                   "Edit.Preferences",
                                   "Lines.CommentOrUncomment",
                                   "Lines.MoveUp",
                                   "Lines.MoveDown",
                                   "Lines.Duplicate",
                                   "Lines.Delete",
                                   "Lines.Join",
                                   "Lines.UpperCase",
                                   "Lines.LowerCase",
                                   "CaretsAndSelections.SelectTheNextSameTextToo",
                                   "CaretsAndSelections.SelectAllSameText",
                                   "CaretsAndSelections.CaretOnTheLineAbove",
                                   "CaretsAndSelections.CaretOnTheLineBelow",
                                   "Search.FindAndReplace",
                                   "Search.FindNext",
                                   "Search.FindPrevious",
                                   "Search.FindInFiles",
                                   "Search.ReplaceInFiles",
                                   "Go.Definition",
                                   "Go.Declaration",
                                   "Go.Implementations",
                                   "Go.References",
                                   "Go.WhatItMeans",
                                   "Go.WhatTheCallTakes",
                                   "Go.NextMatch",
                                   "Go.PreviousMatch",
                                   "Go.GoToSymbol",
                                   "Go.GoToFile",
                                   "Go.GoToSymbolOfThisText",
                                   "Go.GoToSymbolOfThisScope",
                                   "Go.RefreshIndex",
                                   "Go.StopIndexing",
                                   "Go.GoToLine",
                                   "Bookmarks.SetOrRemove",
                                   "Bookmarks.Next",
                                   "Bookmarks.Previous",
                                   "Bookmarks.RemoveAll",
                                   "Go.NextDocument",
                                   "Go.PreviousDocument",
                                   "Go.LastUsedDocument",
                                   "Go.LeastRecentlyUsedDocument",
                                   "Go.OpenDocuments",
                                   "View.Larger",
                                   "View.Smaller",
                                   "View.UsualSize",
                                   "View.WrapLongLines",
                                   "View.ShowBlanksAndTabs",
                                   "View.ShowLevelsOfIndentation",
                                   "Folding.FoldOrUnfold",
                                   "Folding.FoldAll",
                                   "Folding.UnfoldAll",
                                   "View.Outline",
                                   "View.Files",
                                   "Worksheet.OpenWorksheet",
                                   "Worksheet.RunLines",
                                   "Worksheet.Stop",
                                   "Help.Tour",
                                   "Help.AboutSymbols",
                                   "Help.AboutWren"}));
}
