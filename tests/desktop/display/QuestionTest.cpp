#include "QtDesk.h"

#include "tests/support/TempDirectory.h"
#include "vetch/app/Modifiers.h"
#include "vetch/display/Display.h"
#include "vetch/interface/BFilePanel.h"

#include <QAbstractButton>
#include <QAction>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

namespace {

class Question : public QtDesk {
protected:
    // Done by the user once the question is there.
    template <class Answer>
    void Later(Answer answer)
    {
        QTimer::singleShot(0, &user, answer);
    }
    static QMessageBox* Box() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
    static QMenu* Menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static QFileDialog* Panel()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* panel = qobject_cast<QFileDialog*>(widget))
                return panel;
        return nullptr;
    }

    QObject user;
    const vetch::AlertDescription alert{"Tags", "Make <b> & more?", {"Cancel", "A && B", "Make"}};
    const vetch::MenuDescription menu{
        "menu",
        {{"first", true, 'k', B_CONTROL_KEY}, {"operator&&", true, 0, 0}, {"", true, 0, 0}, {"grey", false, 0, 0}},
        {20, 30},
        10};
};

TEST_F(Question, AnAlertShowsItsText)
{
    Later([] {
        EXPECT_EQ(Box()->text(), "Make <b> & more?");
        EXPECT_EQ(Box()->textFormat(), Qt::PlainText);
        EXPECT_EQ(Box()->buttons().size(), 3);
        EXPECT_EQ(Box()->defaultButton()->text(), "Make");
        Box()->buttons()[2]->click();
    });
    EXPECT_EQ(display.RunAlert(alert), 2);
}

TEST_F(Question, EachButtonOfAnAlertHasItsNumber)
{
    for (const int number : {0, 1, 2}) {
        Later([this, number] {
            for (QAbstractButton* button : Box()->buttons())
                if (button->text() == QString::fromStdString(alert.buttons[number]).replace('&', "&&"))
                    return button->click();
            FAIL() << "no such button";
        });
        EXPECT_EQ(display.RunAlert(alert), number);
    }
}

TEST_F(Question, EnterPressesTheLastButtonOfAnAlert)
{
    Later([] { QTest::keyClick(Box(), Qt::Key_Return); });
    EXPECT_EQ(display.RunAlert(alert), 2);
}

TEST_F(Question, AnAlertThatIsDismissedAnswersZero)
{
    Later([] { QTest::keyClick(Box(), Qt::Key_Escape); });
    EXPECT_EQ(display.RunAlert(alert), 0);
    Later([] { Box()->close(); });
    EXPECT_EQ(display.RunAlert(alert), 0);
    Later([] { QTest::keyClick(Box(), Qt::Key_Escape); });
    EXPECT_EQ(display.RunAlert({"Tags", "Only one", {"OK"}}), 0);
}

TEST_F(Question, AnAlertClosesWithTheEditorsWindow)
{
    auto editor = std::make_unique<QWidget>();
    display.SetMainWindow(editor.get());
    Later([&editor] { editor.reset(); });
    EXPECT_EQ(display.RunAlert(alert), 0);
}

TEST_F(Question, UpdatesAreAppliedWhileAnAlertIsOpen)
{
    auto* window = new ResultList;
    window->Show();
    Later([this, window] {
        display.Drain();
        EXPECT_TRUE(PeerOf(window)->isVisible());
        Box()->close();
    });
    display.RunAlert(alert);
}

TEST_F(Question, AMenuAnswersTheChosenRow)
{
    Later([] { QTest::mouseClick(Menu(), Qt::LeftButton, {}, Menu()->actionGeometry(Menu()->actions()[1]).center()); });
    EXPECT_EQ(display.RunMenu(menu), 1);
    Later([] { QTest::keyClick(Menu(), Qt::Key_Escape); });
    EXPECT_EQ(display.RunMenu(menu), std::nullopt);
}

TEST_F(Question, AMenuShowsItsRows)
{
    Later([] {
        const QList<QAction*> rows = Menu()->actions();
        EXPECT_EQ(rows.size(), 4);
        EXPECT_EQ(rows[0]->text(), "first\tCtrl+K");
        EXPECT_TRUE(rows[0]->shortcut().isEmpty()); // the editor's own menu has it
        EXPECT_EQ(rows[1]->text(), "operator&&&&");
        EXPECT_TRUE(rows[2]->isSeparator());
        EXPECT_FALSE(rows[3]->isEnabled());
        EXPECT_EQ(Menu()->pos(), QPoint(20, 30));
        Menu()->close();
    });
    display.RunMenu(menu);
}

// Hears what panels answer.
class Listener : public BLooper {
public:
    Listener() : BLooper(vetch::Service::Application) {}
    void MessageReceived(BMessage* message) override
    {
        EntryRef chosen;
        ++answers;
        for (int32 i = 0; message->FindRef("refs", i, &chosen) == B_OK; ++i)
            paths.push_back(chosen.Path());
    }

    std::vector<std::string> paths;
    int answers = 0;
};

class Panels : public Question {
protected:
    void Open(uint32 flavours, bool multiple = false)
    {
        const EntryRef directory(folder.Path().c_str());
        auto* panel = new BFilePanel(B_OPEN_PANEL, nullptr, &directory, flavours, multiple, nullptr, nullptr);
        panel->Window()->SetTitle("Choose");
        panel->Show();
        Settle();
    }
    size_t OpenLoopers() const { return vetch::Loopers().size(); }

    TempDirectory folder;
};

TEST_F(Panels, APanelForDirectoriesIsNotModal)
{
    Open(B_DIRECTORY_NODE);
    ASSERT_NE(Panel(), nullptr);
    EXPECT_FALSE(Panel()->isModal());
    EXPECT_TRUE(Panel()->isVisible());
    EXPECT_EQ(Panel()->fileMode(), QFileDialog::Directory);
    EXPECT_EQ(Panel()->directory().absolutePath().toStdString(), folder.Path());
    Panel()->reject();
    Settle();
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_EQ(OpenLoopers(), 1u); // the panel's window went as well
}

TEST_F(Panels, TheChoiceIsPosted)
{
    vetch::PanelDescription description;
    auto* listener = new Listener;
    listener->Run();
    description.panel = listener->LooperToken();
    description.handler = listener->Token();
    description.directory = folder.Path();
    description.directoriesOnly = true;
    display.Apply(vetch::PanelOpened{description});
    Settle();
    Panel()->finished(QDialog::Rejected); // dismissed: an answer without files
    Settle();
    EXPECT_EQ(listener->answers, 1);
    EXPECT_TRUE(listener->paths.empty());
    Panel()->findChild<QLineEdit*>()->setText(QString::fromStdString(folder.Path()));
    static_cast<QDialog*>(Panel())->accept();
    Settle();
    EXPECT_EQ(listener->paths, std::vector<std::string>{folder.Path()});
    EXPECT_EQ(Panel(), nullptr);
}

TEST_F(Panels, APanelClosesWithItsWindow)
{
    Open(0, true);
    EXPECT_EQ(Panel()->fileMode(), QFileDialog::ExistingFiles);
    QuitAll();
    EXPECT_EQ(Panel(), nullptr);
}

} // namespace
