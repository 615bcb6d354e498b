// Several carets: "|" stands at each of them, "[" and "]" around what each has selected.
#include "wren/desktop/editor/Carets.h"
#include "wren/desktop/editor/CodeView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QtTest/QTest>

#include <map>

namespace wren {
namespace {

using enum CaretCommand;

void ShowCaret(CodeView& view, std::string marked)
{
    const size_t caret = marked.find('|');
    marked.erase(caret, 1);
    view.SetBytes(marked);
    view.GoTo(static_cast<long>(caret));
}

std::string WithCarets(const CodeView& view)
{
    const ViewText text(view);
    std::map<long, std::string> marks;
    for (long each = 0; each < text.Send(QsciScintilla::SCI_GETSELECTIONS); ++each) {
        const long start = text.Send(QsciScintilla::SCI_GETSELECTIONNSTART, each);
        const long end = text.Send(QsciScintilla::SCI_GETSELECTIONNEND, each);
        marks[start] += start == end ? "|" : "[";
        if (start != end)
            marks[end] += "]";
    }
    std::string marked = view.Bytes();
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark)
        marked.insert(static_cast<size_t>(mark->first), mark->second);
    return marked;
}

QPoint PlaceOf(const CodeView& view, long offset)
{
    const ViewText text(view);
    return {static_cast<int>(text.Send(QsciScintilla::SCI_POINTXFROMPOSITION, 0, offset)) + 1,
            static_cast<int>(text.Send(QsciScintilla::SCI_POINTYFROMPOSITION, 0, offset)) + 2};
}

// QTest's moves have no button and no modifiers.
void Drag(CodeView& view, Qt::KeyboardModifiers held, const QPoint& place)
{
    QMouseEvent move(QEvent::MouseMove, place, view.viewport()->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, held);
    QApplication::sendEvent(view.viewport(), &move);
}

struct CaretCase {
    const char* before;
    std::vector<CaretCommand> commands;
    const char* after;
};

const CaretCase kCaretCases[] = {
    {"a|b ab abc ab", {NextMatch}, "[ab] ab abc ab"},
    {"a|b ab abc ab", {NextMatch, NextMatch}, "[ab] [ab] abc ab"},
    {"a|b ab abc ab", {NextMatch, NextMatch, NextMatch}, "[ab] [ab] abc [ab]"},
    {"ab ab abc a|b", {NextMatch, NextMatch}, "[ab] ab abc [ab]"},
    {"a|b ab abc ab AB", {AllMatches}, "[ab] [ab] abc [ab] AB"},
    {"a\n|b\nc\n", {LineBelow}, "a\n|b\n|c\n"},
    {"a\n|b\nc\n", {LineAbove, LineBelow}, "|a\n|b\n|c\n"},
    {"long|\na\nlonger\n", {LineBelow, LineBelow}, "long|\na|\nl|onger\n"},
    {"|a\n", {LineAbove}, "|a\n"},
};

} // namespace

TEST(Carets, AreAddedWhereTheSameTextIsAndOnLines)
{
    for (const CaretCase& each : kCaretCases) {
        CodeView view;
        ShowCaret(view, each.before);
        for (const CaretCommand command : each.commands)
            view.Apply(command);
        EXPECT_EQ(WithCarets(view), each.after) << each.before;
    }
}

TEST(Carets, GetWhatIsTypedInOneStepToUndo)
{
    CodeView view;
    ShowCaret(view, "|a\nb\nc\n");
    view.Apply(LineBelow);
    view.Apply(LineBelow);
    QTest::keyClicks(&view, "x");
    EXPECT_EQ(WithCarets(view), "x|a\nx|b\nx|c\n");
    QTest::keyClick(&view, Qt::Key_Backspace);
    EXPECT_EQ(WithCarets(view), "|a\n|b\n|c\n");
    view.undo();
    EXPECT_EQ(view.Bytes(), "xa\nxb\nxc\n");
    view.undo();
    EXPECT_EQ(view.Bytes(), "a\nb\nc\n");
}

TEST(Carets, HaveNewLinesIndentedEachLikeItsOwn)
{
    CodeView view;
    view.SetBytes("  a;\n\tb;\n");
    carets::ToggleAt(ViewText(view), 8);
    carets::ToggleAt(ViewText(view), 4);
    carets::ToggleAt(ViewText(view), 0);
    EXPECT_EQ(WithCarets(view), "  a;|\n\tb;|\n");
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(WithCarets(view), "  a;\n  |\n\tb;\n\t|\n");
    view.undo();
    EXPECT_EQ(view.Bytes(), "  a;\n\tb;\n");
}

TEST(Carets, AreOneAgainAfterEscape)
{
    CodeView view;
    ShowCaret(view, "|a\nb\n");
    view.Apply(LineBelow);
    QTest::keyClick(&view, Qt::Key_Escape);
    QTest::keyClicks(&view, "x");
    EXPECT_EQ(view.Bytes(), "a\nxb\n") << "the last that was added";
}

TEST(Carets, ComeWithAClickAndGoWithAnother)
{
    CodeView view;
    view.resize(400, 300);
    ShowCaret(view, "|abc\ndef\n");
    const auto click = [&] {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier, PlaceOf(view, 5));
    };
    click();
    EXPECT_EQ(WithCarets(view), "|abc\nd|ef\n");
    click();
    EXPECT_EQ(WithCarets(view), "|abc\ndef\n");
}

TEST(Carets, MakeAColumnWithKeys)
{
    CodeView view;
    ShowCaret(view, "a|bc\ndef\n");
    QTest::keyClick(&view, Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(WithCarets(view), "a[b]c\nd[e]f\n");
    QTest::keyClicks(&view, "X");
    EXPECT_EQ(view.Bytes(), "aXc\ndXf\n");
}

TEST(Carets, MakeAColumnWithTheMouse)
{
    constexpr Qt::KeyboardModifiers kHeld = Qt::AltModifier | Qt::ShiftModifier;
    CodeView view;
    view.resize(400, 300);
    ShowCaret(view, "abcd\nefgh\nijkl\n|");
    QTest::mousePress(view.viewport(), Qt::LeftButton, kHeld, PlaceOf(view, 1));
    Drag(view, kHeld, PlaceOf(view, 13));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, kHeld, PlaceOf(view, 13));
    EXPECT_EQ(WithCarets(view), "a[bc]d\ne[fg]h\ni[jk]l\n");
    QTest::keyClicks(&view, "X");
    EXPECT_EQ(WithCarets(view), "aX|d\neX|h\niX|l\n");
    view.undo();
    EXPECT_EQ(view.Bytes(), "abcd\nefgh\nijkl\n") << "one step";
}

TEST(Carets, PasteAColumnAsABlock)
{
    CodeView view;
    ShowCaret(view, "a|bc\ndef\n\ngh\nij\n");
    QTest::keyClick(&view, Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    view.copy();
    view.GoTo(10);
    view.paste();
    EXPECT_EQ(view.Bytes(), "abc\ndef\n\ngbh\niej\n");
    view.undo();
    EXPECT_EQ(view.Bytes(), "abc\ndef\n\ngh\nij\n");
}

TEST(Carets, AreOneForAnEditOfTheStores)
{
    CodeView view;
    ShowCaret(view, "|a\nb\n");
    view.Apply(LineBelow);
    const auto store = view.MakeStore();
    EXPECT_EQ(store->Selected(), (Selection{2, 2})) << "the last that was added";
    store->Select(3, 3);
    EXPECT_EQ(WithCarets(view), "a\nb|\n");
}

} // namespace wren
