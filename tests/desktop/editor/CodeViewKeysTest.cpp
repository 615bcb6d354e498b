// Who is asked and who is told when the user does something to a text.
#include "wren/desktop/editor/CodeView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QUrl>
#include <QtTest/QTest>

#include <memory>

namespace wren {
namespace {

// Writes down what it hears.
class Listener : public CodeViewClient {
public:
    bool KeyPressed(CodeView&, const QKeyEvent&) override
    {
        heard += "key ";
        return takes;
    }
    bool TextComing(CodeView&, const std::string& utf8) override
    {
        heard += "coming:" + utf8 + " ";
        return takes;
    }
    void KeyApplied(CodeView&, bool typed) override { heard += typed ? "typed " : "applied "; }
    bool MousePressed(CodeView&, const QMouseEvent& event) override
    {
        heard += event.type() == QEvent::MouseButtonDblClick ? "double " : "press ";
        return takes;
    }
    void ChangedOtherwise(CodeView&) override { heard += "changed "; }
    void CaretMoved(CodeView&) override { carets++; }
    void ModifiedSet(CodeView&, bool modified) override { heard += modified ? "modified " : "saved "; }

    std::string Heard() { return std::exchange(heard, ""); }

    bool takes = false;
    int carets = 0;

private:
    std::string heard;
};

class CodeViewKeys : public testing::Test {
protected:
    CodeViewKeys()
    {
        view->resize(600, 400);
        view->show();
        Start("");
    }

    // '[' and ']' stand around the selection, '|' at the caret.
    void Start(std::string text)
    {
        view->SetClient(nullptr);
        const size_t caret = text.find('|');
        const size_t open = text.find('[');
        const size_t close = text.find(']');
        std::erase_if(text, [](char c) { return c == '|' || c == '[' || c == ']'; });
        view->SetBytes(text);
        if (caret != std::string::npos)
            store->Select(caret, caret);
        else if (open != std::string::npos)
            store->Select(open, close - 1);
        QCoreApplication::processEvents();
        view->SetClient(&listener);
        listener.Heard();
    }

    // Modified or not is another test's.
    std::string HeardOfKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        view->MarkSaved();
        listener.Heard();
        QKeyEvent event(QEvent::KeyPress, key, modifiers, TextOf(key, modifiers));
        QCoreApplication::sendEvent(view.get(), &event);
        return Rest();
    }

    // What a keyboard says with the key, Alt included; QTest would press the modifiers as keys of their own.
    static QString TextOf(int key, Qt::KeyboardModifiers modifiers)
    {
        if (key > Qt::Key_AsciiTilde)
            return key == Qt::Key_Tab ? "\t" : key == Qt::Key_Return ? "\r" : "";
        const QChar letter = QChar(key).toLower();
        return modifiers & Qt::ControlModifier ? QChar(letter.unicode() & 0x1f) : letter;
    }

    std::string Rest()
    {
        QCoreApplication::processEvents();
        std::string heard = listener.Heard();
        for (const std::string word : {"modified ", "saved "})
            if (const size_t at = heard.find(word); at != std::string::npos)
                heard.erase(at, word.size());
        return heard;
    }

    void Compose(const char* preedit, const char* commit)
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(view.get(), &event);
    }

    Listener listener;
    std::unique_ptr<CodeView> view = std::make_unique<CodeView>();
    std::unique_ptr<TextStore> store = view->MakeStore();
};

struct KeyCase {
    const char* why;
    const char* text;
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* heard;
    const char* becomes;
};

const KeyCase kKeys[] = {
    {"a letter", "a|b", Qt::Key_X, Qt::NoModifier, "key typed ", "axb"},
    {"a letter over a selection", "a[bcd]e", Qt::Key_X, Qt::NoModifier, "key typed ", "axe"},
    {"a new line", "a|b", Qt::Key_Return, Qt::NoModifier, "key typed ", "a\nb"},
    {"a tab", "a|b", Qt::Key_Tab, Qt::NoModifier, "key typed ", "a   b"},
    {"a tab over a longer selection", "a[bcdefg]h", Qt::Key_Tab, Qt::NoModifier, "key typed ", "a   h"},
    {"a level less puts in nothing", "b\n    c\n        |a", Qt::Key_Backtab, Qt::ShiftModifier, "key applied ",
     "b\n    c\n    a"},
    {"backspace", "ab|", Qt::Key_Backspace, Qt::NoModifier, "key applied ", "a"},
    {"backspace in the indentation", "b\n    c\n        |a", Qt::Key_Backspace, Qt::NoModifier, "key applied ",
     "b\n    c\n    a"},
    {"delete", "a|b", Qt::Key_Delete, Qt::NoModifier, "key applied ", "a"},
    {"delete at the end", "ab|", Qt::Key_Delete, Qt::NoModifier, "key applied ", "ab"},
    {"an arrow", "a|b", Qt::Key_Left, Qt::NoModifier, "key applied ", "ab"},
    {"escape does nothing to a text", "a|b", Qt::Key_Escape, Qt::NoModifier, "key ", "ab"},
    {"a modifier alone is of no use", "a|b", Qt::Key_Shift, Qt::ShiftModifier, "key ", "ab"},
    {"a function key is of no use", "a|b", Qt::Key_F5, Qt::NoModifier, "key ", "ab"},
    {"nobody's shortcut types nothing", "a|b", Qt::Key_D, Qt::ControlModifier, "key ", "ab"},
    {"nor with Alt, whose letter can be printed", "a|b", Qt::Key_D, Qt::AltModifier, "key ", "ab"},
    {"select all", "a|b", Qt::Key_A, Qt::ControlModifier, "key applied ", "ab"},
    {"cut is a change of another kind", "a[b]c", Qt::Key_X, Qt::ControlModifier, "key changed applied ", "ac"},
    {"paste too", "a|c", Qt::Key_V, Qt::ControlModifier, "key changed applied ", "apastedc"},
    {"undo with nothing to undo", "a|c", Qt::Key_Z, Qt::ControlModifier, "key applied ", "ac"},
};

TEST_F(CodeViewKeys, AreOfferedToTheClientAndThenReportedByEffect)
{
    for (const KeyCase& c : kKeys) {
        QApplication::clipboard()->setText("pasted");
        Start(c.text);
        EXPECT_EQ(HeardOfKey(c.key, c.modifiers), c.heard) << c.why;
        EXPECT_EQ(view->Bytes(), c.becomes) << c.why;
    }
}

TEST_F(CodeViewKeys, HaveNoEffectWhenTheClientTakesThem)
{
    listener.takes = true;
    for (const KeyCase& c : kKeys) {
        Start(c.text);
        const std::string before = view->Bytes();
        EXPECT_EQ(HeardOfKey(c.key, c.modifiers), "key ") << c.why;
        EXPECT_EQ(view->Bytes(), before) << c.why;
    }
}

TEST_F(CodeViewKeys, WindowShortcutsComeFirstExceptForMovementKeys)
{
    struct Case {
        int key;
        Qt::KeyboardModifiers modifiers;
        bool kept;
    };
    const Case kCases[] = {
        {Qt::Key_Z, Qt::ControlModifier, false}, {Qt::Key_V, Qt::ControlModifier, false},
        {Qt::Key_L, Qt::ControlModifier, false}, {Qt::Key_D, Qt::ControlModifier, false},
        {Qt::Key_F3, Qt::NoModifier, false},     {Qt::Key_Left, Qt::ControlModifier, true},
        {Qt::Key_Home, Qt::NoModifier, true},    {Qt::Key_X, Qt::NoModifier, true},
    };
    for (const Case& c : kCases) {
        QKeyEvent asked(QEvent::ShortcutOverride, c.key, c.modifiers);
        asked.ignore();
        QCoreApplication::sendEvent(view.get(), &asked);
        EXPECT_EQ(asked.isAccepted(), c.kept) << c.key;
    }
}

TEST_F(CodeViewKeys, UndoAndRedoAreReportedOnceEach)
{
    Start("|");
    QTest::keyClicks(view.get(), "abc");
    Rest();
    EXPECT_EQ(HeardOfKey(Qt::Key_Z, Qt::ControlModifier), "key changed applied ");
    EXPECT_EQ(view->Bytes(), "");
    view->redo();
    EXPECT_EQ(Rest(), "changed ");
    EXPECT_EQ(view->Bytes(), "abc");
}

TEST_F(CodeViewKeys, TypingAfterAMoveIsUndoneSeparately)
{
    view->SetBytes("");
    QTest::keyClicks(view.get(), "oneTwo"); // with Shift, which moves nothing
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right})
        QTest::keyClick(view.get(), key);
    QTest::keyClicks(view.get(), "three");
    view->undo();
    EXPECT_EQ(view->Bytes(), "oneTwo");
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right})
        QTest::keyClick(view.get(), key);
    view->redo();
    EXPECT_EQ(view->Bytes(), "oneTwothree") << "a move leaves what can be redone";
    view->MarkSaved();
    QTest::keyClick(view.get(), Qt::Key_Left);
    EXPECT_FALSE(view->IsModified());
    view->undo();
    view->undo();
    EXPECT_EQ(view->Bytes(), "");
}

TEST_F(CodeViewKeys, EachTypedLineIsUndoneSeparately)
{
    Start("|");
    QTest::keyClicks(view.get(), "ab");
    QTest::keyClick(view.get(), Qt::Key_Return);
    QTest::keyClicks(view.get(), "cd");
    view->undo();
    EXPECT_EQ(view->Bytes(), "ab\n");
    view->undo();
    EXPECT_EQ(view->Bytes(), "");
}

TEST_F(CodeViewKeys, TextOfAnInputMethodIsOfferedLikeAKey)
{
    Start("a|");
    Compose("", "\u00fc");
    EXPECT_EQ(Rest(), "coming:\u00fc typed ");
    EXPECT_EQ(view->Bytes(), "a\u00fc");
    listener.takes = true;
    Compose("", "x");
    EXPECT_EQ(Rest(), "coming:x ");
    EXPECT_EQ(view->Bytes(), "a\u00fc");
}

TEST_F(CodeViewKeys, ComposedTextIsReportedOnceItIsCommitted)
{
    Start("a|");
    Compose("n", "");
    EXPECT_EQ(Rest(), "");
    listener.takes = true;
    Compose("", "\u306b");
    EXPECT_EQ(Rest(), "coming:\u306b ");
    EXPECT_EQ(view->Bytes(), "a");
}

TEST_F(CodeViewKeys, AClickLeavesComposedTextWhereItWasComposed)
{
    Start("abc\n|");
    Compose("\u4f60\u597d", "");
    const QPoint first(static_cast<int>(view->TextBounds().left) + 2, 5);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, first);
    EXPECT_EQ(view->Bytes(), "abc\n\u4f60\u597d");
    EXPECT_EQ(view->Caret(), 0);
    Compose("", ""); // what an input method says when it ends
    EXPECT_EQ(view->Bytes(), "abc\n\u4f60\u597d");
    view->undo();
    EXPECT_EQ(view->Bytes(), "abc\n");
}

TEST_F(CodeViewKeys, ClicksAreOfferedAndMayBeTaken)
{
    Start("abc def|");
    const QPoint first(static_cast<int>(view->TextBounds().left) + 8, 5);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, first);
    EXPECT_EQ(Rest(), "press ");
    EXPECT_LT(view->Caret(), 3);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, first);
    EXPECT_EQ(Rest(), "double ");
    EXPECT_EQ(store->Selected(), (Selection{0, 3}));
    listener.takes = true;
    store->Select(5, 5);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, first);
    EXPECT_EQ(view->Caret(), 5);
}

TEST_F(CodeViewKeys, EditsThroughTheStoreAreNotReported)
{
    Start("abc|");
    store->BeginUndo({0, 0}, "Name");
    store->Insert(0, "x");
    store->Delete(1, 1);
    store->CloseUndo();
    store->Undo();
    EXPECT_EQ(Rest(), "");
}

TEST_F(CodeViewKeys, OtherEditsAreReportedOnceFromTheEventLoop)
{
    Start("abc|");
    view->insert("x");
    view->insert("y");
    EXPECT_EQ(listener.Heard(), "");
    EXPECT_EQ(Rest(), "changed ");
}

TEST_F(CodeViewKeys, ModifiedIsReportedOnlyWhenItChanges)
{
    Start("abc|");
    QTest::keyClicks(view.get(), "xy");
    EXPECT_EQ(listener.Heard(), "key typed modified key typed ");
    EXPECT_TRUE(view->IsModified());
    view->MarkSaved();
    EXPECT_EQ(listener.Heard(), "saved ");
    view->undo();
    EXPECT_EQ(listener.Heard(), "changed modified ");
    view->redo();
    EXPECT_EQ(listener.Heard(), "changed saved ");
    store->Insert(0, "z");
    EXPECT_EQ(listener.Heard(), "");
    QCoreApplication::processEvents();
    EXPECT_EQ(listener.Heard(), "modified ");
    view->SetBytes("new");
    QCoreApplication::processEvents();
    EXPECT_EQ(listener.Heard(), "saved ");
}

TEST_F(CodeViewKeys, CaretMovesAreReported)
{
    Start("abc|");
    listener.carets = 0;
    QTest::keyClick(view.get(), Qt::Key_Left);
    EXPECT_EQ(listener.carets, 1);
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_EQ(listener.carets, 1);
    store->Select(0, 0);
    EXPECT_EQ(listener.carets, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(listener.carets, 2);
}

TEST_F(CodeViewKeys, AGroupKeepsItsNameAmongWhatTheUserTypes)
{
    Start("abc|");
    QTest::keyClicks(view.get(), "d");
    store->BeginUndo({1, 2}, "Complete");
    store->Insert(4, "efg");
    QTest::keyClicks(view.get(), "x"); // ends the group
    EXPECT_EQ(store->Undo(), "Edit");
    EXPECT_EQ(view->Bytes(), "abcdefg");
    EXPECT_EQ(store->Undo(), "Complete");
    EXPECT_EQ(store->Selected(), (Selection{1, 2}));
    view->redo();
    EXPECT_EQ(view->Bytes(), "abcdefg");
    EXPECT_EQ(store->Undo(), "Complete");
    EXPECT_EQ(store->Undo(), "Edit");
    EXPECT_EQ(store->Undo(), std::nullopt);
    EXPECT_EQ(view->Bytes(), "abc");
}

TEST_F(CodeViewKeys, CopiedTextKeepsItsBytes)
{
    Start("[\xff\x80\xc3\xa4]x");
    view->copy();
    store->Select(5, 5);
    view->paste();
    EXPECT_EQ(view->Bytes(), "\xff\x80\xc3\xa4x\xff\x80\xc3\xa4");
    EXPECT_EQ(QApplication::clipboard()->text().right(1), "\u00e4");
}

TEST_F(CodeViewKeys, FilesDraggedInAreLeftToTheWindow)
{
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/a.c")});
    QMimeData words;
    words.setText("words");
    QDragEnterEvent withFiles({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QDragEnterEvent withWords({5, 5}, Qt::CopyAction, &words, Qt::LeftButton, Qt::NoModifier);
    withFiles.ignore();
    withWords.ignore();
    QCoreApplication::sendEvent(view->viewport(), &withFiles);
    QCoreApplication::sendEvent(view->viewport(), &withWords);
    EXPECT_FALSE(withFiles.isAccepted());
    EXPECT_TRUE(withWords.isAccepted());
}

// A key may run a command that closes the document.
class Closer : public Listener {
public:
    explicit Closer(std::unique_ptr<CodeView>& view) : view(view) {}
    bool KeyPressed(CodeView&, const QKeyEvent&) override
    {
        view.reset();
        return true;
    }

private:
    std::unique_ptr<CodeView>& view;
};

TEST_F(CodeViewKeys, AKeyMayCloseTheView)
{
    Closer closer(view);
    view->SetClient(&closer);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, "x");
    QCoreApplication::sendEvent(view.get(), &key);
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(store->Text(), "");
}

} // namespace
} // namespace wren
