// Tags files that somebody wrote to do harm: what they name is shown as it is, and opened or refused, and that is all.
#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/SparseFile.h"
#include "vetch/support/Cancellation.h"
#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/Endings.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/display/ListPeer.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTextDocument>

#include <csignal>
#include <sys/stat.h>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

const std::string kMarkup = "<img src='x'>&amp;&x<b>bold";

class HostileTags : public EditorStory {
protected:
    void LookUp(const std::string& tags)
    {
        home.Write("tags", tags);
        Start({home.Write("draw.c", "Area\n")});
        SettleBackground();
        Press("F12");
        Settle();
    }
    // The labels in one of the editor's menus, as Qt is given them.
    std::vector<std::string> InMenu(const QString& name)
    {
        std::vector<std::string> labels;
        for (QMenu* menu : TheEditor().Window().menuBar()->findChildren<QMenu*>())
            if (menu->title().remove('&') == name) {
                emit menu->aboutToShow(); // it is filled then
                for (const QAction* action : menu->actions())
                    labels.push_back(action->text().toStdString());
            }
        return labels;
    }
    // The rows of the plug-in's list that is to be seen.
    static std::vector<std::string> Rows()
    {
        std::vector<std::string> rows;
        for (QWidget* widget : QApplication::allWidgets())
            if (auto* list = dynamic_cast<wren::ListPeer*>(widget); list != nullptr && list->isVisible())
                for (int row = 0; row < list->model()->rowCount(); ++row)
                    rows.push_back(list->model()->index(row, 0).data().toString().toStdString());
        return rows;
    }
};

} // namespace

TEST_F(HostileTags, ASparseFileIsReportedAndNotRead)
{
    if (const std::string reason = MakeSparse(home / "tags", kTerabyte); !reason.empty())
        GTEST_SKIP() << reason;
    Start({home.Write("draw.c", "Are")});
    SettleBackground();
    Press("F12");
    Settle();
    const std::string notice = (home / "tags") + " is not read: it is 1.1 TB long";
    EXPECT_THAT(TheEditor().Window().Notices().Told().toStdString(), HasSubstr(notice)) << "a lookup";
    Type("x"); // names are loaded for what is typed
    SettleBackground();
    EXPECT_THAT(TheEditor().Window().Notices().Told().split('\n'), ::testing::SizeIs(1)) << "it is told once";
}

// The loop hears of a signal only when the lookup that it is waiting for has ended.
TEST_F(HostileTags, ATerminationSignalCancelsALookup)
{
    Start();
    {
        const wren::Endings endings(TheEditor());
        std::raise(SIGTERM);
        EXPECT_TRUE(vetch::ReadingIsCancelled());
    }
    vetch::CancelReading(false);
}

TEST_F(HostileTags, MarkupInAListIsShownLiterally)
{
    home.Write("a.h", "int Area;\n");
    LookUp("Area\ta.h\t1;\"\tp\tclass:" + kMarkup + "\nArea\ta.h\t1;\"\tp\n");
    EXPECT_THAT(Rows(), ElementsAre(kMarkup + "::Area - a.h", "Area - a.h"));
}

TEST_F(HostileTags, FileNamesAreNotMarkupInErrorMessages)
{
    const std::string leaf = kMarkup.substr(0, kMarkup.find('\'')) + ">.h";
    ASSERT_EQ(::mkfifo((home / leaf).c_str(), 0600), 0);
    hands.AnswerNextAlert("OK");
    LookUp("Area\t" + leaf + "\t1;\"\tp\n");
    EXPECT_THAT(hands.TakeHeard(),
                ElementsAre(AllOf(HasSubstr(leaf), HasSubstr("holds no text"), Not(HasSubstr("shown as markup")))));
    EXPECT_THAT(Tabs(), ElementsAre("draw.c"));
}

TEST_F(HostileTags, FileNamesAreNotMarkupInTabs)
{
    const std::string leaf = "<b>bold & sly.h";
    home.Write(leaf, "int Area;\n");
    LookUp("Area\t" + leaf + "\t1;\"\tp\n");
    const auto tabs = TheEditor().Window().Tabs().findChild<QTabBar*>();
    EXPECT_EQ(tabs->tabText(1), "<b>bold && sly.h") << "a lone '&' would be the mark of a key";
    QTextDocument shown;
    shown.setHtml(tabs->tabToolTip(1));
    EXPECT_EQ(shown.toPlainText().toStdString(), home / leaf);
}

TEST_F(HostileTags, NamesInMenusSetNoMnemonics)
{
    const std::string leaf = "<b>bold & sly\t&amp;_&x.h";
    Start({home.Write(leaf, "")});
    EXPECT_EQ(InMenu("Open Recent").at(0), home / "<b>bold && sly &&amp;_&&x.h") << "a tab would stand before keys";

    wren::Menus& menus = TheEditor().TheHost().MenuBar();
    menus.AddItem(menus.Search(), 0, "Look <b>up</b> a&b\tc", "SymbolLookup", 0, 0);
    EXPECT_THAT(InMenu("Search"), Contains("Look <b>up</b> a&&b c"));
}

TEST_F(HostileTags, LineNumbersOutOfRangeGoToTheFirstOrLastLine)
{
    const std::string path = home.Write("a.h", "a\nb\nArea\n");
    const struct {
        const char* named;
        long shown; // from 0
    } kCases[] = {{"3", 2}, {"0", 0}, {"-5", 0}, {"2000000000", 3}, {"99999999999999999999", 0}, {"-9999999999", 0}};
    for (const auto& each : kCases) {
        LookUp("Area\t" + path + "\t" + each.named + ";\"\tp\n");
        EXPECT_THAT(Tabs(), ElementsAre("draw.c", "a.h")) << each.named;
        EXPECT_EQ(TheEditor().TheHost().Current()->LineAt(View().Caret()), each.shown) << each.named;
    }
}
