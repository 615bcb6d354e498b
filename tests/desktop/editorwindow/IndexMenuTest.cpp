#include "wren/desktop/IndexMenu.h"
#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/symbols/Palette.h"

#include <QLineEdit>
#include <QTest>
#include <QToolButton>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class IndexOfAProject : public MeaningsStory {
protected:
    QToolButton& Button() { return *TheEditor().Window().findChild<QToolButton*>("index"); }
    std::vector<std::string> Lines()
    {
        emit Button().menu()->aboutToShow();
        std::vector<std::string> lines;
        for (const QAction* action : Button().menu()->actions())
            if (!action->isSeparator())
                lines.push_back(action->text().remove('&').toStdString());
        return lines;
    }
    std::vector<std::string> SymbolsLike(const char* letters)
    {
        Press("Ctrl+T");
        wren::Palette& palette = Symbols().Palettes().ThePalette();
        QTest::keyClicks(palette.findChild<QLineEdit*>(), letters);
        Answered();
        std::vector<std::string> names;
        for (const wren::PaletteItem& item : palette.Items())
            names.push_back(item.name);
        palette.Close();
        Settle();
        return names;
    }
};

} // namespace

TEST_F(IndexOfAProject, TheStatusLineHasItsStateAndAMenu)
{
    StartAt("int a;|\n");
    EXPECT_TRUE(Button().isVisible());
    Until([this] { return Button().text() == "Index"; });
    EXPECT_THAT(Lines(),
                ElementsAre("The index is current", "Refresh Index", "Stop Indexing", "No tags files serve this text"));
}

TEST_F(IndexOfAProject, StopsAndGoesOnWhenTheUserWants)
{
    Start();
    Symbols().StopIndexing();
    TheEditor().Actions().documents.Open(home.Write("project/draw.cpp", "int a;\n"));
    Until([this] { return Symbols().Engine().Updates() > 0 && !Symbols().Engine().IsIndexing(); });
    EXPECT_EQ(Button().text(), "Index stopped");
    EXPECT_THAT(Lines(), Contains("Indexing was stopped"));
    EXPECT_THAT(SymbolsLike("Shape"), IsEmpty());
    const size_t updates = Symbols().Engine().Updates();
    Choose("Go", "Refresh Index");
    Until([&] { return Symbols().Engine().Updates() > updates && !Symbols().Engine().IsIndexing(); });
    EXPECT_EQ(Button().text(), "Index");
    EXPECT_THAT(SymbolsLike("Shape"), Contains("Shape"));
}

TEST_F(IndexOfAProject, TypingDoesNotUndoAStop)
{
    StartAt("int a;|\n");
    Symbols().StopIndexing();
    Type("\nint b;");
    Until([this] { return Symbols().IsIdle(); });
    EXPECT_EQ(Button().text(), "Index stopped");
    EXPECT_FALSE(Symbols().Engine().IsIndexing());
}

TEST_F(IndexOfAProject, ARefreshLooksAtTheFilesNow)
{
    StartAt("int a;|\n");
    const size_t updates = Symbols().Engine().Updates();
    home.Write("project/later.cpp", "class Later {};\n");
    Choose("Go", "Refresh Index");
    Until([&] { return Symbols().Engine().Updates() > updates && !Symbols().Engine().IsIndexing(); });
    EXPECT_THAT(SymbolsLike("Later"), Contains("Later"));
}

TEST_F(IndexOfAProject, TheMenuNamesTheTagsFilesOfTheText)
{
    home.Write("tags", "");
    home.Write("project/tags", "");
    StartAt("int a;|\n");
    EXPECT_THAT(Lines(), AllOf(Contains(HasSubstr(home / "project/tags")), Not(Contains(HasSubstr("No tags")))));
    EXPECT_EQ(wren::TagsServing(home / "a.c").project, home / "tags");
    EXPECT_EQ(wren::TagsServing(home / "a.c").system, "");
    const std::string system = home.Write("Library/Caches/SystemHeaderTags", "");
    EXPECT_EQ(wren::TagsServing(home / "a.c").system, system);
}

TEST_F(IndexOfAProject, IsNotShownWhereNamesAreNotUnderstood)
{
    understandsNames = false;
    Start({home / "project/shapes.h"});
    EXPECT_FALSE(Button().isVisible());
}
