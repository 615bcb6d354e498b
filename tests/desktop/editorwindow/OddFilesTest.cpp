#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/OrdinaryRights.h"
#include "wren/core/Host.h"
#include "wren/desktop/MainWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>

#include <filesystem>

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class OddFiles : public EditorStory {
protected:
    void ExpectRefused(const std::string& path, const char* reason)
    {
        hands.AnswerNextAlert("OK");
        Start({path});
        EXPECT_THAT(hands.TakeHeard(), ElementsAre(AllOf(HasSubstr(path), HasSubstr(reason))));
        EXPECT_THAT(Tabs(), ElementsAre("untitled")) << "and the editor keeps running";
    }
};

// What the panels that are shown meanwhile propose.
class Proposed : public QObject {
public:
    Proposed() { qApp->installEventFilter(this); }
    std::string directory;
    std::string name;

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (auto* panel = qobject_cast<QFileDialog*>(object); panel != nullptr && event->type() == QEvent::Show) {
            directory = panel->directory().path().toStdString();
            name = panel->findChild<QLineEdit*>("fileNameEdit")->text().toStdString();
        }
        return false;
    }
};

struct OddText {
    const char* why;
    std::string bytes;
};

// Each has a last line of letters alone, which is what is edited.
const OddText kOddTexts[] = {
    {"invalid UTF-8", "caf\xe9 \xff\xfe \xc3\nend"},
    {"an overlong sequence and half a surrogate", "\xc0\xaf \xed\xa0\x80\nend"},
    {"NUL bytes", std::string("a\0b\0\0\nend", 10)},
    {"a byte order mark of two bytes", std::string("\xff\xfe"
                                                   "a\0\n\0end",
                                                   9)},
    {"Windows line ends", "one\r\ntwo\r\nend"},
    {"line ends of all kinds", "one\r\ntwo\nthree\rfour\r\n\nend"},
    {"a carriage return in the middle", "one\rtwo\nend"},
    {"other characters that Unicode calls line ends", "one\xe2\x80\xa8two\x0bthree\x0c"
                                                      "four\xc2\x85\nend"},
    {"blanks at the ends of lines", "one  \t\n \nend"},
    {"no line end at all", "end"},
};

} // namespace

TEST_F(OddFiles, ADirectoryIsNotOpened)
{
    ExpectRefused(home.Path(), "Is a directory");
}

TEST_F(OddFiles, ABrokenLinkIsNotOpened)
{
    fs::create_symlink("nowhere.c", home / "link.c");
    ExpectRefused(home / "link.c", "No such file or directory");
    EXPECT_TRUE(fs::is_symlink(home / "link.c"));
}

TEST_F(OddFiles, ALinkToItselfIsNotOpened)
{
    fs::create_symlink("loop.c", home / "loop.c");
    ExpectRefused(home / "loop.c", "Too many levels of symbolic links");
}

TEST_F(OddFiles, AnUnreadableFileIsNotOpened)
{
    const std::string file = home.Write("secret.c", "secret");
    fs::permissions(file, fs::perms::none);
    const OrdinaryRights rights;
    ExpectRefused(file, "Permission denied");
}

TEST_F(OddFiles, OneBadFileDoesNotPreventOpeningTheOthers)
{
    const std::string good = home.Write("good.c", "int a;\n");
    hands.AnswerNextAlert("OK");
    Start({home.Path(), good});
    EXPECT_THAT(Tabs(), ElementsAre("good.c"));
    EXPECT_EQ(Text(), "int a;\n");
}

TEST_F(OddFiles, UnchangedTextsAreSavedByteForByte)
{
    Start();
    for (const OddText& text : kOddTexts) {
        const std::string file = home.Write("odd.c", text.bytes);
        TheEditor().Actions().documents.Open(file);
        EXPECT_EQ(Text(), text.bytes) << text.why;
        fs::remove(file);
        Press("Ctrl+S");
        EXPECT_EQ(Content(file), text.bytes) << text.why;
        Press("Ctrl+W");
    }
}

TEST_F(OddFiles, UnchangedPartsAreSavedByteForByte)
{
    Start();
    for (const OddText& text : kOddTexts) {
        const std::string file = home.Write("odd.c", text.bytes);
        TheEditor().Actions().documents.Open(file);
        Press("Ctrl+End");
        Type("ing");
        Press("Ctrl+S");
        EXPECT_EQ(Content(file), text.bytes + "ing") << text.why;
        Press("Ctrl+W");
    }
}

TEST_F(OddFiles, ANewLineGetsTheLineEndOfTheOthers)
{
    const OddText kEnds[] = {{"Windows", "one\r\n"}, {"Unix", "one\n"}, {"Mac", "one\r"}};
    Start();
    for (const OddText& text : kEnds) {
        const std::string file = home.Write("odd.c", text.bytes);
        TheEditor().Actions().documents.Open(file);
        Press("Ctrl+End");
        Type("two\n");
        Press("Ctrl+S");
        EXPECT_EQ(Content(file), text.bytes + "two" + text.bytes.substr(3)) << text.why;
        Press("Ctrl+W");
    }
}

TEST_F(OddFiles, SavingCreatesAMissingFile)
{
    Start({home / "new.c"});
    EXPECT_EQ(CurrentTab(), "new.c");
    EXPECT_THAT(Status(), HasSubstr("new.c is a new file"));
    EXPECT_FALSE(fs::exists(home / "new.c"));
    Type("int a;");
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "new.c"), "int a;");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(OddFiles, AMissingFileThatStaysEmptyIsNotAskedAbout)
{
    Start({home / "new.c"});
    EXPECT_TRUE(Quit());
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
    EXPECT_FALSE(fs::exists(home / "new.c"));
}

TEST_F(OddFiles, AFileThatAnotherProgramMadeMeanwhileIsNotOverwritten)
{
    Start({home / "new.c"});
    Type("mine");
    home.Write("new.c", "theirs");
    hands.AnswerNextAlert("No");
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "new.c"), "theirs");
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr("Overwrite it?")));
    hands.AnswerNextAlert("Discard");
    EXPECT_TRUE(Quit());
}

TEST_F(OddFiles, AFileInAMissingDirectoryIsNotOpened)
{
    ExpectRefused(home / "nowhere/new.c", "No such file or directory");
}

TEST_F(OddFiles, NamesOfAnyBytesAreKeptWhenSaving)
{
    const std::string file = home.Write("\xff\xfe.c", "old\n");
    Start({file});
    Type("new ");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "new old\n");
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_EQ(TheEditor().TheHost().Current()->Path(), file) << "of the session";
    EXPECT_EQ(Text(), "new old\n");
}

TEST_F(OddFiles, SaveAsNeverProposesADamagedName)
{
    struct Case {
        const char* file;
        const char* directory;
        const char* name;
    };
    const Case kCases[] = {
        {"in/caf\xc3\xa9.c", "/in", "caf\xc3\xa9.c"},
        {"in/caf\xe9.c", "/in", ""},
        {"in/caf\xe9/a.c", "/in", ""},
        {"in/caf\xe9/b/caf\xe9.c", "/in", ""},
    };
    for (const Case& c : kCases) {
        const Proposed proposed;
        Start({home.Write(c.file, "old\n")});
        hands.AnswerNextPanel(std::optional<std::string>());
        Press("Ctrl+Shift+S");
        EXPECT_EQ(proposed.directory, home.Path() + c.directory) << c.file;
        EXPECT_EQ(proposed.name, c.name) << c.file;
    }
}

TEST_F(OddFiles, TheTitleShowsPlaceholdersInNamesLiterally)
{
    Start({home.Write("a[*].c", "")});
    EXPECT_EQ(TheEditor().Window().windowTitle().toStdString(), "a[*][*].c[*] (~) - Wren") << "as Qt wants it";
}

TEST_F(OddFiles, NulBytesArePastedSavedAndReadAgain)
{
    const std::string pasted("one\0two\n\0", 9);
    const std::string file = home.Write("a.c", "old\n");
    Start({file});
    QApplication::clipboard()->setText(QString::fromStdString(pasted));
    Press("Ctrl+V");
    EXPECT_EQ(Text(), pasted + "old\n");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), pasted + "old\n");
    ASSERT_TRUE(Quit());
    Start({file});
    EXPECT_EQ(Text(), pasted + "old\n");
    Type("x");
    EXPECT_EQ(Text(), "x" + pasted + "old\n");
}
