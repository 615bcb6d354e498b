#include "wren/desktop/Completing.h"
#include "tests/desktop/editorwindow/MeaningsStory.h"

#include <QApplication>
#include <QTest>

#include <vector>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class Completing : public MeaningsStory {
protected:
    // The names in the editor's own list; empty while it is hidden.
    std::vector<std::string> Listed()
    {
        std::vector<std::string> names;
        const wren::CompletionList* list = Symbols().Completion().List();
        if (list != nullptr && list->isVisible())
            for (const wren::PaletteItem& item : list->Items())
                names.push_back(item.name);
        return names;
    }
    void TypeAnd(const char* text)
    {
        Type(text);
        Answered();
    }
    // The text, with "|" at the caret.
    std::string Written()
    {
        std::string text = Text();
        return text.insert(static_cast<size_t>(View().Caret()), "|");
    }
    void CompleteWith(const char* which)
    {
        InPreferences([which](QWidget& dialog) { ChooseIn(dialog, "completion", which); });
    }
};

constexpr const char* kTextUse = "#include \"shapes.h\"\nvoid Draw(Shape& shape, int shade)\n{\n    |\n}\n";

} // namespace

TEST_F(Completing, MembersComeAtOnceBehindAnOperator)
{
    StartAt(kTextUse);
    TypeAnd("shape.");
    EXPECT_THAT(Listed(), ElementsAre("Paint", "Area"));
    EXPECT_EQ(QApplication::focusWidget(), &View());
    TypeAnd("a");
    EXPECT_THAT(Listed(), ElementsAre("Area", "Paint")) << "those that begin with the letter, then those that have it";
    Press("Tab");
    EXPECT_EQ(Written(), "#include \"shapes.h\"\nvoid Draw(Shape& shape, int shade)\n{\n    shape.Area|\n}\n");
    EXPECT_THAT(Listed(), IsEmpty());
    Press("Ctrl+Z");
    EXPECT_EQ(Written(), "#include \"shapes.h\"\nvoid Draw(Shape& shape, int shade)\n{\n    shape.a|\n}\n");
}

TEST_F(Completing, ArrowsChooseAndEscapeClosesForThisWord)
{
    StartAt(kTextUse);
    TypeAnd("shape.");
    Press("Down");
    Press("Return");
    EXPECT_EQ(Written(), "#include \"shapes.h\"\nvoid Draw(Shape& shape, int shade)\n{\n    shape.Area|\n}\n");
    TypeAnd("; shape.");
    ASSERT_THAT(Listed(), Not(IsEmpty()));
    Press("Escape");
    EXPECT_THAT(Listed(), IsEmpty());
    TypeAnd("P");
    EXPECT_THAT(Listed(), IsEmpty());
    TypeAnd("aint(); shape.P");
    EXPECT_THAT(Listed(), ElementsAre("Paint")) << "another word";
}

TEST_F(Completing, LocalsComeFromTheFirstLetterOn)
{
    StartAt(kTextUse);
    TypeAnd("s");
    EXPECT_THAT(Listed(), ElementsAre("shade", "shape"));
    TypeAnd("hap");
    EXPECT_THAT(Listed(), ElementsAre("shape"));
    Press("Return");
    EXPECT_EQ(Written(), "#include \"shapes.h\"\nvoid Draw(Shape& shape, int shade)\n{\n    shape|\n}\n");
}

TEST_F(Completing, EnterBehindAWholeNameEndsTheLine)
{
    StartAt("void Draw(int shade, int shades)\n{\n    |\n}\n");
    TypeAnd("shade");
    ASSERT_THAT(Listed(), ElementsAre("shade", "shades"));
    Press("Return");
    EXPECT_EQ(Written(), "void Draw(int shade, int shades)\n{\n    shade\n    |\n}\n");
    EXPECT_THAT(Listed(), IsEmpty());
}

TEST_F(Completing, WordsThatAreNoLocalsAreLeftToThePlugin)
{
    StartAt(kTextUse);
    TypeAnd("Sha");
    EXPECT_THAT(Listed(), IsEmpty()) << "a class";
}

TEST_F(Completing, FilesToIncludeComeWithTheirDelimiter)
{
    home.Write("project/pens/ink.h", "");
    StartAt("|\n");
    TypeAnd("#include \"");
    EXPECT_THAT(Listed(), AllOf(Contains("shapes.h"), Contains("pens/")));
    TypeAnd("pe");
    Press("Tab");
    Answered();
    EXPECT_THAT(Listed(), ElementsAre("ink.h"));
    Press("Tab");
    EXPECT_EQ(Written(), "#include \"pens/ink.h\"|\n");
}

TEST_F(Completing, NothingComesInCommentsAndStrings)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Shape& shape)\n{\n    // |\n}\n");
    TypeAnd("shape.");
    EXPECT_THAT(Listed(), IsEmpty());
}

TEST_F(Completing, TheListFollowsTheCaret)
{
    StartAt(kTextUse);
    TypeAnd("shape.ar");
    ASSERT_THAT(Listed(), ElementsAre("Area"));
    Press("Backspace");
    EXPECT_THAT(Listed(), ElementsAre("Area", "Paint"));
    Press("Left");
    Press("Left");
    EXPECT_THAT(Listed(), IsEmpty()) << "it has left the word";
}

TEST_F(Completing, AnAnswerToAnotherWordShowsNothing)
{
    StartAt(kTextUse);
    Type("shape.");
    Type("; ");
    Answered();
    EXPECT_THAT(Listed(), IsEmpty());
}

TEST_F(Completing, TheCommandAsksWithoutTyping)
{
    StartAt("#include \"shapes.h\"\nvoid Draw(Shape& shape)\n{\n    shape.P|\n}\n");
    Ask("Ctrl+.");
    EXPECT_THAT(Listed(), ElementsAre("Paint"));
    Ask("Backspace");
    EXPECT_THAT(Listed(), ElementsAre("Paint", "Area"));
    Press("Escape");
    Type("P");
    Ask("Ctrl+Space");
    EXPECT_THAT(Listed(), ElementsAre("Paint"));
}

TEST_F(Completing, ThePluginsListIsLeftByEscapeAndTakesByTab)
{
    home.Write("project/tags", "!_TAG_FILE_SORTED\t1\t//\nPaint\tshapes.h\t3;\"\tp\nPair\tshapes.h\t4;\"\tp\n");
    StartAt("Pai|");
    Press("Ctrl+.");
    SettleBackground();
    ASSERT_THAT(PluginWindows(), ElementsAre("completions"));
    Press("Escape");
    EXPECT_THAT(PluginWindows(), IsEmpty());
    EXPECT_EQ(Written(), "Pai|");
    Press("Ctrl+.");
    SettleBackground();
    ASSERT_THAT(PluginWindows(), ElementsAre("completions"));
    Press("Tab");
    EXPECT_EQ(Written(), "Paint|");
    EXPECT_THAT(PluginWindows(), IsEmpty());
    EXPECT_THAT(Listed(), IsEmpty()) << "one list at a time";
}

TEST_F(Completing, APreferenceChoosesWhoseListComes)
{
    StartAt(kTextUse);
    CompleteWith("Tags");
    TypeAnd("shape.");
    EXPECT_THAT(Listed(), IsEmpty());
    CompleteWith("Nothing while typing");
    TypeAnd("Area(); shape.");
    EXPECT_THAT(Listed(), IsEmpty());
    CompleteWith("Meanings");
    TypeAnd("Area(); Sha");
    EXPECT_THAT(Listed(), Contains("Shape"));
    EXPECT_THAT(Content(SettingsFile()), ::testing::HasSubstr("WrenCompletion editor\n"));
}
