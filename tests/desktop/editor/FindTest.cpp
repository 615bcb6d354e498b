// Finding and replacing, and the bar for it.
#include "wren/desktop/editor/FindBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest/QTest>

namespace wren {
namespace {

constexpr unsigned kExpression = 1;
constexpr unsigned kCase = 2;
constexpr unsigned kWords = 4;
constexpr unsigned kBackwards = 8;

TextSearch SearchFor(const char* text, unsigned options)
{
    return {text, (options & kExpression) != 0, (options & kCase) != 0, (options & kWords) != 0,
            (options & kBackwards) != 0};
}

std::string Marked(const CodeView& view)
{
    const Selection selected = ViewText(view).Selected();
    return view.Bytes().insert(selected.end, "]").insert(selected.start, "[");
}

// '[' and ']' stand around the selection.
void Start(CodeView& view, std::string text)
{
    const size_t open = text.find('[');
    const size_t close = text.find(']');
    std::erase_if(text, [](char c) { return c == '[' || c == ']'; });
    view.SetBytes(text);
    ViewText(view).Select(open, close - 1);
}

struct FindCase {
    const char* why;
    const char* text;
    const char* wanted;
    unsigned options;
    const char* becomes; // the same as 'text' when nothing is found
};

const FindCase kFinds[] = {
    {"the first", "[]a b a", "a", 0, "[a] b a"},
    {"the next", "[a] b a", "a", 0, "a b [a]"},
    {"round the end", "a b [a]", "a", 0, "[a] b a"},
    {"the one before", "a b [a]", "a", kBackwards, "[a] b a"},
    {"round the beginning", "[a] b a", "a", kBackwards, "a b [a]"},
    {"nothing", "[]a b", "c", 0, "[]a b"},
    {"an empty text", "[]a b", "", 0, "[]a b"},
    {"another case", "[]x Ab", "aB", 0, "x [Ab]"},
    {"only that case", "[]Ab aB", "aB", kCase, "Ab [aB]"},
    {"within words", "[]cats cat", "cat", 0, "[cat]s cat"},
    {"another case of a non-ASCII letter", "[]x \xc3\x84", "\xc3\xa4", 0, "x [\xc3\x84]"},
    {"that letter in its case", "[]\xc3\x84 \xc3\xa4", "\xc3\xa4", kCase, "\xc3\x84 [\xc3\xa4]"},
    {"in its case backwards", "aB ab aB []", "aB", kCase | kBackwards, "aB ab [aB] "},
    {"over the end of a line", "[]a\nb", "A\nB", 0, "[a\nb]"},
    {"whole words only", "[]cats cat", "cat", kWords, "cats [cat]"},
    {"dots are not an expression", "[]ab a.", "a.", 0, "ab [a.]"},
    {"an expression", "[]ab a12", "a\\d+", kExpression, "ab [a12]"},
    {"an expression of another case", "[]x AB", "a[b]", kExpression, "x [AB]"},
    {"an expression in its case", "[]AB ab", "ab", kExpression | kCase, "AB [ab]"},
    {"an expression for whole words", "[]cats cat", "c.t", kExpression | kWords, "cats [cat]"},
    {"an expression backwards", "a1 a2 [a3]", "a\\d", kExpression | kBackwards, "a1 [a2] a3"},
    {"backwards over lines, round", "[a1]\n b\na2\n", "a\\d", kExpression | kBackwards, "a1\n b\n[a2]\n"},
    {"the beginning of a line, in the middle of one", "a[]b\nc", "^", kExpression, "ab\n[]c"},
    {"the next beginning", "[]ab\nc", "^", kExpression, "ab\n[]c"},
    {"the beginning before", "ab\n[]c", "^", kExpression | kBackwards, "[]ab\nc"},
    {"what stands before is seen", "[ab] b ab", "(?<=a)b", kExpression, "ab b a[b]"},
    {"within a line only", "[]a\nb", "a\\sb", kExpression, "[]a\nb"},
    {"non-ASCII letters", "[]\xc3\xa4 \xc3\xb6x", "\\wx", kExpression, "\xc3\xa4 [\xc3\xb6x]"},
    {"invalid UTF-8", "[]\xff\xff x1", "x\\d", kExpression, "\xff\xff [x1]"},
    {"an expression that is not valid", "[]a(", "a(", kExpression, "[]a("},
    {"whole words make none valid", "[]a", "a)(?:a", kExpression | kWords, "[]a"},
};

TEST(Find, Cases)
{
    for (const FindCase& c : kFinds) {
        CodeView view;
        Start(view, c.text);
        view.Find(SearchFor(c.wanted, c.options));
        EXPECT_EQ(Marked(view), c.becomes) << c.why;
    }
}

TEST(Find, ReportsWhetherItFoundAMatch)
{
    CodeView view;
    view.SetBytes("abc");
    EXPECT_TRUE(view.Find(SearchFor("b", 0)));
    EXPECT_FALSE(view.Find(SearchFor("x", 0)));
    EXPECT_FALSE(view.Find(SearchFor("x(", kExpression)));
    EXPECT_TRUE(view.IsValid(SearchFor("x(", 0)));
    EXPECT_FALSE(view.IsValid(SearchFor("x(", kExpression)));
    EXPECT_EQ(view.Count(SearchFor(".", kExpression), 100), 3);
    EXPECT_EQ(view.Count(SearchFor(".", kExpression), 2), 2);
}

TEST(Find, SurvivesLongLines)
{
    CodeView view;
    view.SetBytes(std::string(300'000, 'a') + "\nac\n");
    EXPECT_TRUE(view.Find(SearchFor("a.*", kExpression)));
    EXPECT_EQ(ViewText(view).Selected(), (Selection{0, 300'000}));
    EXPECT_TRUE(view.Find(SearchFor("^(a|b)+c", kExpression)));
    EXPECT_EQ(ViewText(view).Selected(), (Selection{300'001, 300'003}));
}

TEST(Replace, ReplacesTheMatchAndFindsTheNext)
{
    CodeView view;
    Start(view, "[a] b a");
    EXPECT_TRUE(view.ReplaceSelected(SearchFor("a", 0), "xyz"));
    EXPECT_EQ(Marked(view), "xyz b [a]");
    EXPECT_TRUE(view.ReplaceSelected(SearchFor("(a)", kExpression), "<\\1\\1>"));
    EXPECT_EQ(Marked(view), "xyz b <[a]a>");
}

TEST(Replace, ReplacesMatchesOnly)
{
    CodeView view;
    Start(view, "[b] a");
    EXPECT_FALSE(view.ReplaceSelected(SearchFor("a", 0), "xyz"));
    EXPECT_EQ(Marked(view), "b [a]");
}

TEST(Replace, ReplacesAllInOneStep)
{
    struct Case {
        const char* why;
        const char* text;
        const char* wanted;
        unsigned options;
        const char* with;
        long count;
        const char* becomes;
    };
    const Case kCases[] = {
        {"plain", "a b a", "a", 0, "xy", 2, "xy b xy"},
        {"by something that holds it", "aa", "a", 0, "aa", 2, "aaaa"},
        {"by nothing", "a b a", "a", 0, "", 2, " b "},
        {"groups", "f(1) f(2)", "f\\((\\d)\\)", kExpression, "g[\\1]\\t\\0", 2, "g[1]\tf(1) g[2]\tf(2)"},
        {"a group that is not there", "ab", "(a)|(b)", kExpression, "<\\1\\2>", 2, "<a><b>"},
        {"beginnings", "a\nb", "^", kExpression, "> ", 2, "> a\n> b"},
        {"ends", "a\r\nb\r\n", "$", kExpression, ";", 3, "a;\r\nb;\r\n;"},
        {"new lines are the file's", "a,b\r\n", ",", kExpression, "\\n", 1, "a\r\nb\r\n"},
        {"no escapes in plain text", "a", "a", 0, "\\n", 1, "\\n"},
        {"non-ASCII letters", "\xc3\xa4x\xc3\xa4x", "x", kExpression, "y", 2, "\xc3\xa4y\xc3\xa4y"},
        {"nothing", "a", "b", 0, "c", 0, "a"},
        {"not valid", "a", "(", kExpression, "c", 0, "a"},
    };
    for (const Case& c : kCases) {
        CodeView view;
        view.SetBytes(c.text);
        EXPECT_EQ(view.ReplaceAll(SearchFor(c.wanted, c.options), c.with), c.count) << c.why;
        EXPECT_EQ(view.Bytes(), c.becomes) << c.why;
        view.undo();
        EXPECT_EQ(view.Bytes(), c.text) << c.why;
    }
}

class FindBarTest : public testing::Test {
protected:
    FindBarTest()
    {
        auto* rows = new QVBoxLayout(&window);
        rows->addWidget(view);
        rows->addWidget(bar);
        bar->SetView(view);
        view->SetBytes("one two one\nthree");
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        bar->Open();
    }

    QLineEdit* Field(const char* name) { return bar->findChild<QLineEdit*>(name); }
    void Press(const char* name) { bar->findChild<QToolButton*>(name)->click(); }

    QWidget window;
    CodeView* view = new CodeView;
    FindBar* bar = new FindBar;
};

TEST_F(FindBarTest, EnterFindsTheNextAndShiftEnterThePrevious)
{
    EXPECT_TRUE(Field("find")->hasFocus());
    QTest::keyClicks(Field("find"), "one");
    EXPECT_EQ(bar->Message(), "1 of 2");
    EXPECT_EQ(Marked(*view), "[one] two one\nthree");
    QTest::keyClick(Field("find"), Qt::Key_Return);
    EXPECT_EQ(Marked(*view), "one two [one]\nthree");
    EXPECT_EQ(bar->Message(), "2 of 2");
    QTest::keyClick(Field("find"), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Marked(*view), "[one] two one\nthree");
}

TEST_F(FindBarTest, FindsFromTheCaretWhileTheUserTypes)
{
    view->SetBytes("thread two three\n");
    view->GoTo(7);
    QTest::keyClicks(Field("find"), "th");
    EXPECT_EQ(Marked(*view), "thread two [th]ree\n");
    QTest::keyClicks(Field("find"), "rea");
    EXPECT_EQ(Marked(*view), "[threa]d two three\n") << "round the end";
    QTest::keyClick(Field("find"), Qt::Key_Backspace);
    EXPECT_EQ(Marked(*view), "thread two [thre]e\n") << "from the same place again";
    QTest::keyClicks(Field("find"), "x");
    EXPECT_EQ(bar->Message(), "Not found");
    EXPECT_EQ(Marked(*view), "thread two [thre]e\n");
    Field("find")->selectAll();
    QTest::keyClick(Field("find"), Qt::Key_Backspace);
    EXPECT_EQ(Marked(*view), "thread []two three\n") << "nothing is looked for";
}

TEST_F(FindBarTest, ContinuesFromAMovedSelection)
{
    QTest::keyClicks(Field("find"), "o");
    EXPECT_EQ(Marked(*view), "[o]ne two one\nthree");
    QTest::keyClick(Field("find"), Qt::Key_Return);
    EXPECT_EQ(Marked(*view), "one tw[o] one\nthree");
    QTest::keyClicks(Field("find"), "n");
    EXPECT_EQ(Marked(*view), "one two [on]e\nthree");
    view->GoTo(0);
    QTest::keyClicks(Field("find"), "e");
    EXPECT_EQ(Marked(*view), "[one] two one\nthree");
    Press("case");
    EXPECT_EQ(Marked(*view), "[one] two one\nthree");
}

TEST_F(FindBarTest, EnterReplacesAndFindsTheNext)
{
    QTest::keyClicks(Field("find"), "one");
    Field("with")->setFocus();
    QTest::keyClicks(Field("with"), "1");
    QTest::keyClick(Field("with"), Qt::Key_Return);
    EXPECT_EQ(Marked(*view), "1 two [one]\nthree");
    EXPECT_TRUE(Field("with")->hasFocus());
    QTest::keyClick(Field("with"), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Marked(*view), "1 two [one]\nthree");
    QTest::keyClick(Field("with"), Qt::Key_Return);
    EXPECT_EQ(view->Bytes(), "1 two 1\nthree");
    EXPECT_EQ(bar->Message(), "Not found");
}

TEST_F(FindBarTest, ReportsErrors)
{
    Field("find")->setText("four");
    EXPECT_EQ(bar->Message(), "Not found");
    Field("find")->setText("(");
    Press("expression");
    EXPECT_EQ(bar->Message(), "Not a valid expression");
    Press("next");
    EXPECT_EQ(bar->Message(), "Not a valid expression");
    Field("find")->setText("t.o");
    EXPECT_EQ(bar->Message(), "1 match");
    Field("find")->setText("");
    EXPECT_EQ(bar->Message(), "");
}

TEST_F(FindBarTest, TogglesAreOptions)
{
    Field("find")->setText("ONE");
    EXPECT_EQ(bar->Wanted(), SearchFor("ONE", 0));
    Press("case");
    EXPECT_EQ(bar->Message(), "Not found");
    Press("words");
    EXPECT_EQ(bar->Wanted(), SearchFor("ONE", kCase | kWords));
}

TEST_F(FindBarTest, ReplacesOneMatchOrAll)
{
    Field("find")->setText("o");
    Field("with")->setText("0");
    Press("next");
    Press("replace");
    EXPECT_EQ(Marked(*view), "0ne tw[o] one\nthree");
    Press("replaceAll");
    EXPECT_EQ(view->Bytes(), "0ne tw0 0ne\nthree");
    EXPECT_EQ(bar->Message(), "2 replaced");
    Press("replaceAll");
    EXPECT_EQ(bar->Message(), "Not found");
}

TEST_F(FindBarTest, CountsWithoutAPlaceWhenNoMatchIsSelected)
{
    QTest::keyClicks(Field("find"), "one");
    view->GoTo(5);
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar->Message() == "2 matches"; })) << bar->Message().toStdString();
}

TEST_F(FindBarTest, CountsAgainWhenTheTextHasChanged)
{
    QTest::keyClicks(Field("find"), "one");
    ViewText(*view).Replace(4, 7, "one");
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar->Message() == "1 of 3"; })) << bar->Message().toStdString();
}

TEST_F(FindBarTest, CountsALongTextFromTheEventLoop)
{
    std::string text;
    for (int line = 0; line < 100'000; line++)
        text += "int one;\n";
    view->SetBytes(text);
    Field("find")->setText("one");
    EXPECT_THAT(bar->Message().toStdString(), testing::HasSubstr("or more"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar->Message() == "100000 matches"; })) << bar->Message().toStdString();
    Press("previous");
    EXPECT_EQ(bar->Message(), "100000 of 100000");
}

TEST_F(FindBarTest, MarksAllMatchesUntilItIsClosed)
{
    const auto isMarked = [this](long offset) {
        return ViewText(*view).Send(QsciScintillaBase::SCI_INDICATORVALUEAT, 23, offset) != 0;
    };
    Field("find")->setText("one");
    EXPECT_TRUE(isMarked(0));
    EXPECT_FALSE(isMarked(4));
    EXPECT_TRUE(isMarked(8));
    bar->Close();
    EXPECT_FALSE(isMarked(0));
    EXPECT_FALSE(isMarked(8));
}

TEST_F(FindBarTest, EscapeGivesTheKeyboardBack)
{
    QTest::keyClick(Field("find"), Qt::Key_Escape);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_TRUE(view->hasFocus());
}

TEST_F(FindBarTest, OpensWithTheSelectionOfALine)
{
    ViewText(*view).Select(4, 7);
    bar->Open();
    EXPECT_EQ(Field("find")->text(), "two");
    ViewText(*view).Select(4, 14);
    bar->Open();
    EXPECT_EQ(Field("find")->text(), "two");
}

TEST_F(FindBarTest, OutlivesItsView)
{
    Field("find")->setText("one");
    delete view;
    Press("next");
    Press("replaceAll");
    EXPECT_EQ(bar->Message(), "");
    QTest::keyClick(Field("find"), Qt::Key_Escape);
    EXPECT_FALSE(bar->isVisible());
}

} // namespace
} // namespace wren
