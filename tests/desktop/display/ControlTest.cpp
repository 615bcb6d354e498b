#include "QtDesk.h"

#include "tests/support/TestBundle.h"
#include "vetch/interface/InterfaceFile.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

const long kSymbolField = 1;
const long kLookUpButton = 2;
const long kCancelButton = 3;

constexpr uint32 kLookUp = FourCC("LkUp");
constexpr uint32 kCancel = FourCC("not!");
constexpr uint32 kEntered = FourCC("entr");

// The plug-in's dialog for symbols, as its own code makes it.
class Dialog : public DiaryWindow {
public:
    explicit Dialog(TestBundle& bundle) : DiaryWindow(&bundle.bundle, "DeclarationDialogs", "EntryWindow")
    {
        AddButton(kLookUpButton, kLookUp);
        AddButton(kCancelButton, kCancel);
        field = new BTextControl;
        AddChildFromNib(field, kSymbolField);
        field->SetMessage(new BMessage(kEntered));
        field->MakeFocus();
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what == kLookUp)
            diary.push_back(std::string("look up ") + field->Text());
        else if (message->what == kCancel)
            diary.push_back("cancel");
        else if (message->what == kEntered)
            diary.push_back(std::string("entered ") + field->Text());
        else
            DiaryWindow::MessageReceived(message);
    }

    BTextControl* field = nullptr;

private:
    void AddButton(long item, uint32 command)
    {
        auto* button = new BButton;
        AddChildFromNib(button, item);
        button->SetMessage(new BMessage(command));
    }
};

class Controls : public QtDesk {
protected:
    Dialog* Show()
    {
        auto* dialog = new Dialog(bundle);
        dialog->Show();
        Settle();
        return dialog;
    }
    static std::pair<long, long> SelectionOf(const BTextControl* field)
    {
        long start = -1;
        long end = -1;
        field->GetSelection(&start, &end);
        return {start, end};
    }

    TestBundle bundle;
};

using Diary = std::vector<std::string>;
using Range = std::pair<long, long>;

TEST_F(Controls, ADialogMatchesItsInterfaceFile)
{
    const Dialog* dialog = Show();
    EXPECT_EQ(PeerOf(dialog)->geometry().topLeft(), QPoint(448, 160));
    EXPECT_EQ(In<QLineEdit>(dialog)->geometry(), QRect(16, 40, 352, 24));
    EXPECT_EQ(In<QPushButton>(dialog)->text(), "Look Up");
    EXPECT_TRUE(In<QPushButton>(dialog)->isDefault());
    EXPECT_FALSE(In<QPushButton>(dialog, 1)->isDefault());
    EXPECT_EQ(In<QLabel>(dialog)->text(), "Symbol:");
}

TEST_F(Controls, TheFocusViewHasTheKeyboard)
{
    const Dialog* dialog = Show();
    EXPECT_TRUE(In<QLineEdit>(dialog)->hasFocus());
}

TEST_F(Controls, EachEditIsPostedAndItsEchoChangesNothing)
{
    Dialog* dialog = Show();
    auto* edit = In<QLineEdit>(dialog);
    QTest::keyClicks(edit, "std::");
    QTest::keyClick(edit, Qt::Key_Home);
    Settle();
    EXPECT_STREQ(dialog->field->Text(), "std::");
    EXPECT_EQ(edit->text(), "std::");
    EXPECT_EQ(edit->cursorPosition(), 0); // where the user went since
    EXPECT_TRUE(dialog->diary.empty());
}

TEST_F(Controls, TextsAndSelectionsSurviveTheRoundTripInBytes)
{
    Dialog* dialog = Show();
    auto* edit = In<QLineEdit>(dialog);
    Do(*dialog, [dialog] {
        dialog->field->SetText("aä漢😀z");
        dialog->field->Select(1, 10);
    });
    EXPECT_EQ(edit->text(), QString::fromUtf8("aä漢😀z"));
    EXPECT_EQ(edit->selectedText(), QString::fromUtf8("ä漢😀"));
    edit->insert(QString::fromUtf8("ß"));
    QTest::keyClick(edit, Qt::Key_X);
    Settle();
    EXPECT_STREQ(dialog->field->Text(), "aßxz");
    EXPECT_EQ(SelectionOf(dialog->field), Range(4, 4));
}

TEST_F(Controls, InvalidBytesAreShownAsReplacementCharacters)
{
    Dialog* dialog = Show();
    Do(*dialog, [dialog] {
        dialog->field->SetText("a\xff"
                               "b");
        dialog->field->Select(2, 3);
    });
    EXPECT_EQ(In<QLineEdit>(dialog)->text(), QString::fromUtf8("a\uFFFDb"));
    EXPECT_EQ(In<QLineEdit>(dialog)->selectedText(), "b");
    EXPECT_STREQ(dialog->field->Text(), "a\xff"
                                        "b"); // nobody has edited it
}

TEST_F(Controls, AllOfATextCanBeSelected)
{
    Dialog* dialog = Show();
    Do(*dialog, [dialog] {
        dialog->field->SetText("vector");
        dialog->field->Select(0, 6);
    });
    EXPECT_EQ(In<QLineEdit>(dialog)->selectedText(), "vector");
}

TEST_F(Controls, EnterEntersTheTextAndPressesTheFirstButton)
{
    Dialog* dialog = Show();
    auto* edit = In<QLineEdit>(dialog);
    QTest::keyClicks(edit, "map");
    QTest::keyClick(edit, Qt::Key_Return);
    Settle();
    EXPECT_EQ(dialog->diary, (Diary{"entered map", "look up map"}));
}

TEST_F(Controls, EscapePressesTheLastButton)
{
    Dialog* dialog = Show();
    QTest::keyClick(In<QLineEdit>(dialog), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(dialog->diary, Diary{"cancel"});
}

TEST_F(Controls, LeavingAnEditedFieldEntersItsText)
{
    Dialog* dialog = Show();
    auto* edit = In<QLineEdit>(dialog);
    QTest::keyClicks(edit, "map");
    QTest::keyClick(edit, Qt::Key_Tab);
    Settle();
    EXPECT_EQ(dialog->diary, Diary{"entered map"});
    EXPECT_TRUE(In<QPushButton>(dialog, 1)->hasFocus()); // the next from the left, though it was made last
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Tab);
    Settle();
    EXPECT_EQ(dialog->diary.size(), 1u); // nothing was edited this time
}

TEST_F(Controls, AButtonIsPressedByMouseAndByKey)
{
    Dialog* dialog = Show();
    QTest::mouseClick(In<QPushButton>(dialog), Qt::LeftButton);
    In<QPushButton>(dialog, 1)->setFocus();
    QTest::keyClick(In<QPushButton>(dialog, 1), Qt::Key_Return);
    Settle();
    EXPECT_EQ(dialog->diary, (Diary{"look up ", "cancel"}));
}

TEST_F(Controls, TheFrameworkMayTakeTheFocusAway)
{
    Dialog* dialog = Show();
    Do(*dialog, [dialog] { dialog->field->MakeFocus(false); });
    EXPECT_FALSE(In<QLineEdit>(dialog)->hasFocus());
    Do(*dialog, [dialog] { dialog->field->MakeFocus(); });
    EXPECT_TRUE(In<QLineEdit>(dialog)->hasFocus());
}

// The plug-in's settings: a check box and a text of several lines among others.
class Settings : public Controls {
protected:
    Settings()
    {
        view = vetch::MakeViewFromNib(&bundle.bundle, "DeclarationDialogs", "org.wren.Declaration");
        view->AddChildFromNib(box, 14);
        view->AddChildFromNib(area, 20);
        window->AddChild(view);
        window->Show();
        Settle();
    }

    DiaryWindow* window = new DiaryWindow({0, 0, 480, 496}, "Settings", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
    BView* view = nullptr;
    BCheckBox* box = new BCheckBox;
    BTextControl* area = new BTextControl;
};

TEST_F(Settings, ACheckBoxFollowsAndChangesItsSetting)
{
    auto* shown = In<QCheckBox>(window);
    const bool before = box->Value();
    EXPECT_EQ(shown->isChecked(), before);
    QTest::keyClick(shown, Qt::Key_Space);
    Settle();
    EXPECT_EQ(box->Value(), !before);
    EXPECT_EQ(shown->isChecked(), !before);
    Do(*window, [this, before] { box->SetValue(before); });
    EXPECT_EQ(shown->isChecked(), before);
}

TEST_F(Settings, ATextOfSeveralLinesFollowsAndChangesItsSetting)
{
    auto* shown = In<QPlainTextEdit>(window);
    Do(*window, [this] { area->SetText("/usr/include\n\u00a0größer\n"); });
    EXPECT_EQ(shown->blockCount(), 3);
    QTest::keyClicks(shown, "x");
    Settle();
    EXPECT_STREQ(area->Text(), "/usr/include\n\u00a0größer\nx");
    QTest::keyClick(shown, Qt::Key_Return);
    Settle();
    EXPECT_STREQ(area->Text(), "/usr/include\n\u00a0größer\nx\n");
    EXPECT_EQ(SelectionOf(area), Range(26, 26));
}

TEST_F(Settings, ACrLfPairIsOneLineEnd)
{
    Do(*window, [this] {
        area->SetText("a\r\nb");
        area->Select(0, 4);
    });
    EXPECT_EQ(In<QPlainTextEdit>(window)->textCursor().selectedText().size(), 3);
}

} // namespace
