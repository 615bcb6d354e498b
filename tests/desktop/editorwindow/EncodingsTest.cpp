// Files that are not plain UTF-8.
#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/FileContent.h"
#include "wren/core/Host.h"
#include "wren/desktop/MainWindow.h"

#include <QMenu>
#include <QToolButton>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class FilesInOtherEncodings : public EditorStory {
protected:
    std::string Shown() const
    {
        const auto* button = TheWindow().findChild<QToolButton*>("encoding");
        return button == nullptr ? "" : button->text().toStdString();
    }
    void Choose(const char* menu, const char* encoding)
    {
        for (QMenu* each : TheWindow().findChildren<QMenu*>())
            if (each->title().remove('&') == menu)
                for (QAction* action : each->actions())
                    if (action->text() == encoding)
                        return Trigger(*each, *action);
        FAIL() << menu << " has no " << encoding;
    }

private:
    QWidget& TheWindow() const { return const_cast<FilesInOtherEncodings*>(this)->TheEditor().Window(); }
    void Trigger(QMenu& menu, QAction& action)
    {
        emit menu.aboutToShow();
        ASSERT_TRUE(action.isEnabled());
        action.trigger();
        Settle();
    }
};

using namespace std::string_literals;

const std::string kWide = "\xff\xfei\0n\0t\0 \0\xe9\0;\0\n\0"s;
const std::string kWideText = "int \xc3\xa9;\n";

} // namespace

TEST_F(FilesInOtherEncodings, AreShownAsTextsAndSavedAsTheyWere)
{
    const std::string file = home.Write("a.c", kWide);
    Start({file});
    EXPECT_EQ(Text(), kWideText);
    EXPECT_EQ(Shown(), "UTF-16 LE with BOM");
    Type("x");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "\xff\xfex\0"s + kWide.substr(2));
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
}

TEST_F(FilesInOtherEncodings, AMarkIsNotPartOfTheText)
{
    const std::string file = home.Write("a.c", "\xef\xbb\xbfint a;\n");
    Start({file});
    EXPECT_EQ(Text(), "int a;\n");
    EXPECT_EQ(Shown(), "UTF-8 with BOM");
    Choose("Save in", "UTF-8");
    EXPECT_EQ(Content(file), "int a;\n");
    EXPECT_EQ(Shown(), "UTF-8");
    Choose("Save in", "UTF-8 with BOM");
    EXPECT_EQ(Content(file), "\xef\xbb\xbfint a;\n");
}

TEST_F(FilesInOtherEncodings, BytesAreReadAgainAsTheUserSays)
{
    const std::string file = home.Write("a.c", "// caf\xe9\n");
    Start({file});
    EXPECT_EQ(Text(), "// caf\xe9\n");
    EXPECT_EQ(Shown(), "not UTF-8");
    Choose("Reload as", "UTF-8");
    EXPECT_EQ(Shown(), "not UTF-8") << "it still is not";
    Choose("Reload as", "ISO 8859-1");
    EXPECT_EQ(Text(), "// caf\xc3\xa9\n");
    EXPECT_EQ(Shown(), "ISO 8859-1");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    Press("Ctrl+End");
    Type("x");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "// caf\xe9\nx");
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_EQ(Text(), "// caf\xc3\xa9\nx") << "the session remembers it";
    EXPECT_EQ(Shown(), "ISO 8859-1");
}

TEST_F(FilesInOtherEncodings, ReadingAgainAsksAboutChanges)
{
    Start({home.Write("a.c", "caf\xe9\n")});
    Type("x");
    hands.AnswerNextAlert("No");
    Choose("Reload as", "ISO 8859-1");
    EXPECT_EQ(Text(), "xcaf\xe9\n");
    EXPECT_EQ(Shown(), "not UTF-8");
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr("Discard your changes")));
    Press("Ctrl+S");
}

TEST_F(FilesInOtherEncodings, BytesThatAreNotOfThatEncodingStayAsTheyAre)
{
    const std::string file = home.Write("a.c", "a\xff\x81\n");
    Start({file});
    hands.AnswerNextAlert("OK");
    Choose("Reload as", "EUC-JP");
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr(file + ": its byte 2 is not EUC-JP")));
    EXPECT_EQ(Text(), "a\xff\x81\n");
    EXPECT_EQ(Shown(), "not UTF-8");
}

TEST_F(FilesInOtherEncodings, NothingIsSavedThatTheEncodingHasNot)
{
    const std::string file = home.Write("a.c", "int a; // \xe2\x82\xac\n");
    Start({file});
    hands.AnswerNextAlert("OK");
    Choose("Save in", "ISO 8859-1");
    EXPECT_THAT(hands.TakeHeard(),
                ElementsAre(HasSubstr(file + ": not saved: line 1: \"\xe2\x82\xac\" is not in ISO 8859-1")));
    EXPECT_EQ(Content(file), "int a; // \xe2\x82\xac\n");
    EXPECT_EQ(Shown(), "UTF-8");
    Choose("Save in", "ISO 8859-15");
    EXPECT_EQ(Content(file), "int a; // \xa4\n");
}

TEST_F(FilesInOtherEncodings, AnotherProgramsTextIsReadInTheSameWay)
{
    const std::string file = home.Write("a.c", "caf\xe9\n");
    Start({file});
    Choose("Reload as", "ISO 8859-1");
    home.Write("a.c", "\xe9t\xe9\n");
    TheEditor().Window().activateWindow();
    ComeBack();
    EXPECT_TRUE(Until([this] { return Text() == "\xc3\xa9t\xc3\xa9\n"; }));
    home.Write("a.c", "\xc3\xa9\n");
    ComeBack();
    EXPECT_TRUE(Until([this] { return Shown() == "UTF-8"; })) << "it was converted";
    EXPECT_EQ(Text(), "\xc3\xa9\n");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(FilesInOtherEncodings, ATextThatBecomesUtf8IsShownAsSuch)
{
    const std::string file = home.Write("a.c", "\xe9");
    Start({file});
    EXPECT_EQ(Shown(), "not UTF-8");
    Press("Ctrl+A");
    Type("e");
    Press("Ctrl+S");
    EXPECT_EQ(Shown(), "UTF-8");
}
