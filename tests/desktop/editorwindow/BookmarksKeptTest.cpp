#include "tests/desktop/editorwindow/EditorStory.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class BookmarksKept : public EditorStory {
protected:
    void MarkTheThirdLine()
    {
        Start({home.Write("a.h", "int a;\nint b;\nint c;\n"), home.Write("b.h", "")});
        Press("Ctrl+PgUp");
        View().GoToLine(3);
        Press("Ctrl+F2");
    }
    void Open(const char* leaf)
    {
        TheEditor().Actions().documents.Open(home / leaf);
        Settle();
    }
};

} // namespace

TEST_F(BookmarksKept, WhenTheTabClosesAndTheFileOpensAgain)
{
    MarkTheThirdLine();
    Press("Ctrl+W");
    Open("a.h");
    EXPECT_THAT(View().Bookmarks(), ElementsAre(2));
    EXPECT_FALSE(View().IsModified());
}

TEST_F(BookmarksKept, AtTheirLineWhenTheFileHasChangedMeanwhile)
{
    MarkTheThirdLine();
    Press("Ctrl+W");
    home.Write("a.h", "// one\n// two\nint a;\nint b;\nint c;\n");
    Open("a.h");
    EXPECT_THAT(View().Bookmarks(), ElementsAre(4));
}

TEST_F(BookmarksKept, ForAnotherStartWithoutTheFile)
{
    MarkTheThirdLine();
    Press("Ctrl+W");
    ASSERT_TRUE(Quit());
    Start({home / "b.h"});
    Open("a.h");
    EXPECT_THAT(View().Bookmarks(), ElementsAre(2));
}

TEST_F(BookmarksKept, WhenTheEditorEndsWithItsFilesOpen)
{
    MarkTheThirdLine();
    ASSERT_TRUE(Quit());
    home.Write("a.h", "// one\nint a;\nint b;\nint c;\n");
    Start();
    Open("a.h");
    EXPECT_THAT(View().Bookmarks(), ElementsAre(3)) << "also in a session that is restored";
}

TEST_F(BookmarksKept, UntilTheUserRemovesThem)
{
    MarkTheThirdLine();
    Press("Ctrl+W");
    Open("a.h");
    View().GoToLine(3);
    Press("Ctrl+F2");
    Press("Ctrl+W");
    Open("a.h");
    EXPECT_THAT(View().Bookmarks(), IsEmpty());
    ASSERT_TRUE(Quit());
    Start({home / "a.h"});
    EXPECT_THAT(View().Bookmarks(), IsEmpty());
}
