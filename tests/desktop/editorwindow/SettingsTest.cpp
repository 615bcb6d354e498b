#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <csignal>
#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

class Settings : public EditorStory {
protected:
    bool UntilStored(const char* line)
    {
        return Until([this, line] { return Content(SettingsFile()).find(line) != std::string::npos; });
    }
    ino_t Inode() const // of the file, which is another one whenever it was written
    {
        struct stat status = {};
        ::stat(SettingsFile().c_str(), &status);
        return status.st_ino;
    }
};

QLineEdit* FieldNamed(const QWidget& dialog, const char* name)
{
    for (QLineEdit* field : dialog.findChildren<QLineEdit*>())
        if (field->accessibleName() == name)
            return field;
    return nullptr;
}

QLineEdit* FieldWith(const QWidget& dialog, const char* text)
{
    for (QLineEdit* field : dialog.findChildren<QLineEdit*>())
        if (field->text().contains(text))
            return field;
    return nullptr;
}

QCheckBox* BoxNamed(const QWidget& dialog, const char* label)
{
    for (QCheckBox* box : dialog.findChildren<QCheckBox*>())
        if (box->text().remove('&') == label)
            return box;
    return nullptr;
}

std::vector<std::string> MarkedBoxes(const QWidget& dialog)
{
    std::vector<std::string> marked;
    for (const QCheckBox* box : dialog.findChildren<QCheckBox*>())
        if (box->autoFillBackground())
            marked.push_back(box->text().remove('&').toStdString());
    return marked;
}

std::vector<std::string> ShownTitles(const QWidget& dialog)
{
    std::vector<std::string> shown;
    const auto* titles = dialog.findChild<QListWidget*>();
    for (int row = 0; row < titles->count(); ++row)
        if (!titles->item(row)->isHidden())
            shown.push_back(titles->item(row)->text().toStdString());
    return shown;
}

void Push(const QWidget& dialog, const char* label)
{
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text().remove('&') == label)
            return button->click();
    FAIL() << "no button " << label;
}

constexpr const char* kOptionClick = "DeclOptionClickToFindDeclaration off\n";

} // namespace

TEST_F(Settings, EditorSettingsApplyAndAreStoredAtOnce)
{
    Start();
    InPreferences([this](QWidget& dialog) {
        Tick(dialog, "Wrap long lines");
        EXPECT_TRUE(View().Look().wraps);
        UntilStored("WrenWrapLines on\n");
    });
}

TEST_F(Settings, OpenTextsFollowTheDesktopsColours)
{
    Start({home.Write("a.c", ""), home.Write("b.c", "")});
    ASSERT_FALSE(View().Look().dark);
    QApplication::setPalette(QPalette(Qt::darkGray, Qt::black)); // as it does when the desktop turns dark
    Settle();
    EXPECT_TRUE(View().Look().dark);
    Press("Ctrl+PgUp");
    EXPECT_TRUE(View().Look().dark);
    QApplication::setPalette(QPalette());
    Settle();
    EXPECT_FALSE(View().Look().dark);
}

TEST_F(Settings, PlugInSettingsAreStoredAtOnce)
{
    Start();
    InPreferences([this](QWidget& dialog) {
        Tick(dialog, "Option-click to look up a declaration");
        UntilStored(kOptionClick);
        Tick(dialog, "Option-click to look up a declaration");
        Until([this] { return Content(SettingsFile()).find(kOptionClick) == std::string::npos; });
    });
}

TEST_F(Settings, AreStoredWhenThePreferencesCloseAtOnce)
{
    Start();
    InPreferences([this](QWidget& dialog) {
        Tick(dialog, "Wrap long lines");
        Tick(dialog, "Option-click to look up a declaration");
    });
    EXPECT_THAT(Content(SettingsFile()), HasSubstr("WrenWrapLines on\n"));
    EXPECT_THAT(Content(SettingsFile()), HasSubstr(kOptionClick));
}

TEST_F(Settings, AreStoredAtOnceWhenASignalEndsTheEditor)
{
    Start();
    InPreferences([this](QWidget& dialog) {
        Tick(dialog, "Wrap long lines");
        TheEditor().PrepareToEnd(SIGTERM);
        EXPECT_THAT(Content(SettingsFile()), HasSubstr("WrenWrapLines on\n"));
    });
}

TEST_F(Settings, StandOnPagesWithFullNames)
{
    Start();
    InPreferences([](QWidget& dialog) {
        const auto* titles = dialog.findChild<QListWidget*>();
        ASSERT_NE(titles, nullptr);
        EXPECT_EQ(titles->count(), 5);
        EXPECT_GE(titles->viewport()->width(), titles->sizeHintForColumn(0));
    });
}

TEST_F(Settings, ASearchLeavesThePagesThatHaveTheWords)
{
    Start();
    InPreferences([](QWidget& dialog) {
        auto* wanted = FieldNamed(dialog, "Search the preferences");
        ASSERT_NE(wanted, nullptr);
        QTest::keyClicks(wanted, "lines wrap");
        EXPECT_THAT(ShownTitles(dialog), ElementsAre("Text", "Keys")) << "a menu has it too";
        EXPECT_THAT(MarkedBoxes(dialog), ElementsAre("Wrap long lines"));
        wanted->clear();
        QTest::keyClicks(wanted, "go forward");
        EXPECT_THAT(ShownTitles(dialog), ElementsAre("Keys")) << "where commands are";
        wanted->clear();
        QTest::keyClicks(wanted, "option-click");
        EXPECT_THAT(ShownTitles(dialog), ElementsAre("Symbols")) << "the plug-in's";
        EXPECT_TRUE(BoxNamed(dialog, "Option-click to look up a declaration")->isVisible());
        wanted->clear();
        EXPECT_THAT(ShownTitles(dialog), SizeIs(5));
        EXPECT_THAT(MarkedBoxes(dialog), IsEmpty());
        QTest::keyClicks(wanted, "no such thing");
        EXPECT_THAT(ShownTitles(dialog), IsEmpty());
    });
}

TEST_F(Settings, CancelTakesChangesBack)
{
    home.Write(".config/wren/settings", "WrenTabWidth 8\n");
    Start();
    InPreferences([this](QWidget& dialog) {
        Tick(dialog, "Wrap long lines");
        Tick(dialog, "Option-click to look up a declaration");
        QLineEdit* suffixes = FieldWith(dialog, "*.h");
        ASSERT_NE(suffixes, nullptr);
        QTest::keyClicks(suffixes, " *.zz");
        UntilStored(kOptionClick);
        Push(dialog, "Cancel");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_FALSE(View().Look().wraps);
    EXPECT_EQ(Content(SettingsFile()), "WrenTabWidth 8\n");
}

TEST_F(Settings, ATextThatIsTypedStillIsStoredWhenTheWindowCloses)
{
    Start();
    InPreferences([](QWidget& dialog) {
        dialog.findChild<QListWidget*>()->setCurrentRow(4);
        QLineEdit* suffixes = FieldWith(dialog, "*.h");
        ASSERT_NE(suffixes, nullptr);
        suffixes->setFocus();
        suffixes->setCursorPosition(0);
        QTest::keyClicks(suffixes, "*.zz ");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_THAT(Content(SettingsFile()), HasSubstr("DeclIndexSuffixes *.zz ")) << "and not only when the editor ends";
}

TEST_F(Settings, AreKeptForTheNextStart)
{
    Start();
    InPreferences([this](QWidget& dialog) { Tick(dialog, "Show blanks and tabs"); });
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_TRUE(View().Look().showsBlanks);
}

TEST_F(Settings, UnchangedSettingsAreNotWrittenAgain)
{
    Start();
    InPreferences([this](QWidget& dialog) { Tick(dialog, "Wrap long lines"); });
    const ino_t before = Inode();
    InPreferences([](QWidget&) {});
    ASSERT_TRUE(Quit());
    EXPECT_EQ(Inode(), before);
}

TEST_F(Settings, SettingsThatAnotherEditorStoredAreKept)
{
    home.Write(".config/wren/settings", "DeclAutoComplete off\n");
    Start();
    home.Write(".config/wren/settings", "DeclIndexSuffixes *.h\nWrenTabWidth 8\n"); // by another one
    InPreferences([](QWidget& dialog) {
        Tick(dialog, "Wrap long lines");
        Tick(dialog, "Option-click to look up a declaration");
    });
    EXPECT_THAT(Content(SettingsFile()),
                AllOf(HasSubstr("DeclIndexSuffixes *.h\n"), HasSubstr("WrenTabWidth 8\n"),
                      HasSubstr("WrenWrapLines on\n"), HasSubstr(kOptionClick), Not(HasSubstr("DeclAutoComplete"))));
}

TEST_F(Settings, EnterInAFieldResetsNothing)
{
    home.Write(".config/wren/settings", "WrenKeys SymbolLookup=F5\n");
    Start();
    InPreferences([](QWidget& dialog) {
        auto* size = dialog.findChild<QSpinBox*>("fontSize");
        size->setFocus();
        size->selectAll();
        QTest::keyClicks(size, "13");
        QTest::keyClick(size, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_THAT(Content(SettingsFile()),
                AllOf(HasSubstr("WrenKeys SymbolLookup=F5\n"), HasSubstr("WrenFontSize 13\n")));
}

TEST_F(Settings, EnterOnTheButtonResetsTheKeys)
{
    home.Write(".config/wren/settings", "WrenKeys SymbolLookup=F5\n");
    Start();
    InPreferences([](QWidget& dialog) {
        auto* reset = dialog.findChild<QPushButton*>("reset");
        reset->setFocus();
        QTest::keyClick(reset, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_THAT(Content(SettingsFile()), Not(HasSubstr("WrenKeys")));
}

TEST_F(Settings, KeysThatHideMenuShortcutsAreReported)
{
    Start();
    InPreferences(
        [](QWidget& dialog) { EXPECT_EQ(dialog.findChild<QLabel*>("conflicts")->text(), "") << "of the usual ones"; });
    ASSERT_TRUE(Quit());
    home.Write(".config/wren/settings", "WrenKeys SymbolLookup=Ctrl+F\n");
    Start();
    InPreferences([](QWidget& dialog) {
        EXPECT_THAT(
            dialog.findChild<QLabel*>("conflicts")->text().toStdString(),
            AllOf(HasSubstr("Ctrl+F is the menu key"), HasSubstr("Find and Replace"), HasSubstr("Look up symbol")));
    });
}

TEST_F(Settings, SettingsThatCannotBeStoredAreReported)
{
    Start();
    fs::remove_all(home / ".config");
    home.Write(".config", "in the way");
    InPreferences([this](QWidget& dialog) {
        Tick(dialog, "Wrap long lines");
        Until([this] { return !Notice().empty(); });
    });
    EXPECT_THAT(Notice(), HasSubstr(".config"));
    EXPECT_TRUE(View().Look().wraps) << "they count all the same";
    hands.AnswerNextAlert("OK");
    EXPECT_TRUE(Quit());
}

TEST_F(Settings, AChoiceReplacesADamagedSetting)
{
    home.Write(".config/wren/settings", "DeclAutoComplete On\nDeclOptionClickToFindDeclaration yes\n");
    Start();
    ASSERT_THAT(Notice(), HasSubstr("DeclOptionClickToFindDeclaration cannot be \"yes\""));
    InPreferences([](QWidget& dialog) { Tick(dialog, "Option-click to look up a declaration"); });
    EXPECT_EQ(Content(SettingsFile()), std::string("DeclAutoComplete On\n") + kOptionClick);
}

TEST_F(Settings, ChoosingTheDefaultReplacesADamagedSetting)
{
    home.Write(".config/wren/settings", "DeclOptionClickToFindDeclaration yes\nWrenFontSize huge\n");
    Start();
    InPreferences([this](QWidget& dialog) {
        for (int times = 0; times < 2; ++times) {
            Tick(dialog, "Option-click to look up a declaration");
            Settle();
        }
        auto* size = dialog.findChild<QSpinBox*>("fontSize");
        size->stepUp();
        size->stepDown();
    });
    EXPECT_EQ(Content(SettingsFile()), "");
}

TEST_F(Settings, SymbolSettingsShowTheBeginningOfLongTexts)
{
    home.Write(".config/wren/settings", "DeclIndexSuffixes *.h " + std::string(400, 'x') + "\n");
    Start();
    InPreferences([](QWidget& dialog) {
        auto* titles = dialog.findChild<QListWidget*>();
        titles->setCurrentRow(titles->count() - 1);
        int texts = 0;
        for (const QLineEdit* field : dialog.findChildren<QLineEdit*>()) {
            if (!field->isVisible() || field->text().isEmpty())
                continue;
            ++texts;
            EXPECT_EQ(field->cursorPosition(), 0) << field->text().toStdString();
        }
        EXPECT_GT(texts, 0);
    });
}

TEST_F(Settings, ManyDamagedSettingsAreAllReportedAndLeaveRoomForTheText)
{
    std::string lines;
    for (int line = 0; line < 50; ++line)
        lines += "WrenNoSuchThing" + std::to_string(line) + " 1\n";
    home.Write(".config/wren/settings", lines);
    Start();
    EXPECT_THAT(Notice(), HasSubstr("WrenNoSuchThing0\""));
    EXPECT_THAT(Notice(), HasSubstr("WrenNoSuchThing49\""));
    EXPECT_LT(TheEditor().Window().Notices().height(), TheEditor().Window().height() / 3);
}

TEST_F(Settings, TheWheelChangesTheFontSizeInAllTexts)
{
    Start({home.Write("a.c", ""), home.Write("b.c", "")});
    const int usual = View().Look().font.pointSize();
    const auto turn = [this](int eighths, Qt::KeyboardModifiers held) {
        QWidget* at = View().viewport();
        QWheelEvent event(at->rect().center(), at->mapToGlobal(at->rect().center()), QPoint(), QPoint(0, eighths),
                          Qt::NoButton, held, Qt::NoScrollPhase, false);
        QApplication::sendEvent(at, &event);
    };
    turn(120, Qt::NoModifier);
    EXPECT_EQ(View().Look().font.pointSize(), usual);
    turn(240, Qt::ControlModifier);
    EXPECT_EQ(View().Look().font.pointSize(), usual + 2);
    turn(-60, Qt::ControlModifier);
    EXPECT_EQ(View().Look().font.pointSize(), usual + 2);
    turn(-60, Qt::ControlModifier);
    EXPECT_EQ(View().Look().font.pointSize(), usual + 1);
    Press("Ctrl+PgUp");
    EXPECT_EQ(View().Look().font.pointSize(), usual + 1);
    Press("Ctrl+0");
    EXPECT_EQ(View().Look().font.pointSize(), usual);
}

TEST_F(Settings, ThousandsOfWrongLinesAreCountedAndCanAllBeRead)
{
    std::string lines;
    for (int number = 1; number <= 2000; ++number)
        lines += "WrenTabWidth wrong" + std::to_string(number) + "\n";
    lines += "Wren" + std::string(1'000'000, 'x') + " on\n";
    home.Write(".config/wren/settings", lines);
    Start();
    auto& notices = TheEditor().Window().Notices();
    const std::string shown = notices.findChild<QLabel*>()->text().toStdString();
    EXPECT_THAT(shown, AllOf(HasSubstr("settings:2000: "), HasSubstr("1951 older notices"), HasSubstr("Show All"),
                             Not(HasSubstr("settings:1: "))));
    EXPECT_LT(shown.size(), 50'000u);
    notices.findChild<QToolButton*>("all")->click();
    EXPECT_THAT(Text(),
                AllOf(HasSubstr("settings:1: WrenTabWidth: "), HasSubstr("settings:2001: no setting is named")));
    EXPECT_THAT(CurrentTab(), "untitled") << "not to be saved";
    ASSERT_TRUE(Quit());
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
    const std::string kept = Content(SettingsFile());
    EXPECT_EQ(kept.size(), lines.size()) << "for the user to correct";
    EXPECT_NE(kept.find("WrenTabWidth wrong1\n"), std::string::npos);
}

TEST_F(Settings, ThePreferencesFitOnASmallScreen)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(3 * usual.pointSizeF());
    QApplication::setFont(large);
    Start();
    InPreferences([](QWidget& dialog) {
        const QSize screen = dialog.screen()->availableSize();
        EXPECT_LE(dialog.width(), screen.width());
        EXPECT_LE(dialog.height(), screen.height());
    });
    QApplication::setFont(usual);
}
