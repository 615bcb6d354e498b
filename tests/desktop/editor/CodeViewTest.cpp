// What a text looks like on the screen, what it is kept as, and where its places are.
#include "wren/desktop/editor/CodeView.h"

#include "wren/desktop/editor/CodeLexer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QtTest/QTest>

#include <cmath>

namespace wren {
namespace {

using namespace std::string_literals;

// ---------------------------------------------------------------------------------------------------- Very long lines

long WidthsKept(const CodeView& view)
{
    return ViewText(view).Send(QsciScintilla::SCI_GETPOSITIONCACHE);
}

TEST(CodeView, KeepsTheWidthsOfManyWordsOnlyForVeryLongLines)
{
    constexpr long kMany = 60'000;
    const std::string longLine(30'000, 'x');
    const struct {
        const char* why;
        std::string text;
        bool many;
    } kCases[] = {
        {"no text", "", false},
        {"a usual text", "int a;\nint b;\n", false},
        {"a long text of short lines", std::string(30'000, '\n'), false},
        {"lines that end with a return", std::string(30'000, '\r'), false},
        {"a line of many bytes", longLine, true},
        {"behind usual lines", "a\nb\n" + longLine + "\nc\n", true},
    };
    for (const auto& each : kCases) {
        CodeView view;
        view.SetBytes(each.text);
        EXPECT_EQ(WidthsKept(view) > kMany, each.many) << each.why;
        CodeView readAgain;
        readAgain.SetBytes("a\n");
        readAgain.ReadAgain(each.text);
        EXPECT_EQ(WidthsKept(readAgain) > kMany, each.many) << each.why;
    }
}

TEST(CodeView, SeparatesTheWordsOfVeryLongLinesWithoutColouringThem)
{
    const std::string words = "one \"two\" 3 /* four */ ";
    std::string longLine;
    while (longLine.size() < 30'000)
        longLine += words;
    for (const auto& [bytes, separate] : {std::pair(words, false), std::pair(longLine, true)}) {
        CodeView view;
        view.SetBytes(bytes);
        view.SetLanguageFor("/notes.txt");
        const ViewText text(view);
        text.Send(QsciScintilla::SCI_COLOURISE, 0, static_cast<long>(words.size()));
        EXPECT_EQ(text.StyleAt(0) != text.StyleAt(3), separate);
        for (long at = 0; at < static_cast<long>(words.size()); ++at)
            EXPECT_EQ(text.Send(QsciScintilla::SCI_STYLEGETFORE, text.StyleAt(at)),
                      text.Send(QsciScintilla::SCI_STYLEGETFORE, text.StyleAt(0)))
                << at;
    }
}

// ------------------------------------------------------------------------------------------------- Bytes and line ends

TEST(CodeView, KeepsEveryByte)
{
    std::string all;
    for (int byte = 0; byte < 256; byte++)
        all += static_cast<char>(byte);
    for (const std::string& bytes : {""s, "\n"s, "no newline"s, "a\r\nb\nc\rd"s, "\0\0"s, all, all + all}) {
        CodeView view;
        view.SetBytes(bytes);
        EXPECT_EQ(view.Bytes(), bytes);
        EXPECT_FALSE(view.IsModified());
        EXPECT_EQ(view.Caret(), 0);
    }
}

TEST(CodeView, TypesTheMostCommonLineEnd)
{
    struct Case {
        const char* why;
        const char* text;
        LineEnds ends;
        const char* typed;
    };
    const Case kCases[] = {
        {"no line", "", LineEnds::Unix, "\n"},
        {"Unix", "a\nb\n", LineEnds::Unix, "\na\nb\n"},
        {"Windows", "a\r\nb\r\n", LineEnds::Windows, "\r\na\r\nb\r\n"},
        {"Mac", "a\rb\r", LineEnds::Mac, "\ra\rb\r"},
        {"mostly Windows", "a\r\nb\r\nc\nd\r", LineEnds::Windows, "\r\na\r\nb\r\nc\nd\r"},
        {"mostly Unix", "a\nb\nc\r\n", LineEnds::Unix, "\na\nb\nc\r\n"},
        {"as many of each", "a\nb\r\n", LineEnds::Unix, "\na\nb\r\n"},
    };
    for (const Case& c : kCases) {
        CodeView view;
        view.SetBytes(c.text);
        EXPECT_EQ(view.Ends(), c.ends) << c.why;
        QTest::keyClick(&view, Qt::Key_Return);
        EXPECT_EQ(view.Bytes(), c.typed) << c.why;
    }
}

// --------------------------------------------------------------------------------------------------------- Indentation

TEST(Indentation, IsDetectedFromTheFile)
{
    struct Case {
        const char* why;
        const char* text;
        Indentation shown;
    };
    const Indentation kOtherwise = {true, 3};
    const Case kCases[] = {
        {"nothing", "", kOtherwise},
        {"no indented line", "a\nb\n", kOtherwise},
        {"tabs", "a\n\tb\n\t\tc\n", {true, 3}},
        {"four blanks", "a {\n    b\n    c\n        d\n}\n", {false, 4}},
        {"two blanks", "a {\n  b {\n    c\n  }\n}\n", {false, 2}},
        {"more tabs than blanks", "\ta\n\tb\n  c\n", {true, 3}},
        {"comments that go on say nothing", "/*\n * a\n * b\n */\n", kOtherwise},
        {"single columns are not a level", "a(b,\n c)\n", kOtherwise},
        {"empty lines say nothing", "a\n    \n    \n\tb\n", {true, 3}},
        {"Windows ends", "a {\r\n  b\r\n}\r\n", {false, 2}},
    };
    for (const Case& c : kCases)
        EXPECT_EQ(DetectIndentation(c.text, kOtherwise), c.shown) << c.why;
}

TEST(CodeView, IndentsTypedLines)
{
    struct Case {
        const char* why;
        const char* text; // '|' is the caret
        const char* keys; // "\n" is Return
        const char* becomes;
    };
    const Case kCases[] = {
        {"as the line before", "    a|", "\nb", "    a\n    b"},
        {"tabs as well", "\ta|", "\nb", "\ta\n\tb"},
        {"one level more after a brace", "x {|", "\ny", "x {\n    y"},
        {"in the file's own levels", "a {\n  b\n}\nx {|", "\ny", "a {\n  b\n}\nx {\n  y"},
        {"in tabs", "\tx {|", "\ny", "\tx {\n\t\ty"},
        {"blanks behind the brace", "x { |", "\ny", "x { \n    y"},
        {"a brace goes back to its partner's line", "x {|", "\ny\n}", "x {\n    y\n}"},
        {"and to a partner far in", "        if (x) {|", "\n}", "        if (x) {\n        }"},
        {"an unmatched brace goes one level back", "        |", "}", "    }"},
        {"a brace behind text stays", "x {\n    a|", "}", "x {\n    a}"},
        {"a brace in a comment does not match", "x {\n    // {\n    |", "}", "x {\n    // {\n}"},
        {"Windows ends", "x {|\r\n", "\ny", "x {\r\n    y\r\n"},
        {"in the middle of a line", "    a|b", "\n", "    a\n    b"},
    };
    for (const Case& c : kCases) {
        CodeView view;
        view.SetLanguageFor("a.c");
        std::string text = c.text;
        const size_t caret = text.find('|');
        text.erase(caret, 1);
        view.SetBytes(text);
        view.GoTo(static_cast<long>(caret));
        for (const char* key = c.keys; *key != '\0'; key++)
            *key == '\n' ? QTest::keyClick(&view, Qt::Key_Return) : QTest::keyClick(&view, *key);
        EXPECT_EQ(view.Bytes(), c.becomes) << c.why;
    }
}

TEST(CodeView, UsesTheDefaultIndentationWhereTheFileShowsNone)
{
    CodeView view;
    EditorLook look = view.Look();
    look.indentsWithTabs = true;
    view.SetLook(look);
    view.SetBytes("a\n");
    EXPECT_EQ(view.IndentsWith(), (Indentation{true, look.tabWidth}));
    QTest::keyClick(&view, Qt::Key_Tab);
    EXPECT_EQ(view.Bytes(), "\ta\n");
}

// ------------------------------------------------------------------------------------------------------ Words and
// looks

constexpr const char* kSample = "// comment\n"
                                "#import <a.h>\n"
                                "@interface Thing : NSObject\n"
                                "@property id name;\n"
                                "- (BOOL)run:(int)count;\n"
                                "@end\n"
                                "x = @\"a \\\" b\" + nil;\n"
                                "return 42;\n";

TEST(CodeView, ColoursObjectiveC)
{
    struct Case {
        const char* word;
        int style;
    };
    const Case kCases[] = {
        {"// comment", QsciLexerCPP::CommentLine}, {"#import", QsciLexerCPP::PreProcessor},
        {"@interface", QsciLexerCPP::KeywordSet2}, {"Thing", QsciLexerCPP::Identifier},
        {"@property", QsciLexerCPP::KeywordSet2},  {"id", QsciLexerCPP::KeywordSet2},
        {"BOOL", QsciLexerCPP::KeywordSet2},       {"int)", QsciLexerCPP::Keyword},
        {"@end", QsciLexerCPP::KeywordSet2},       {"b\" +", QsciLexerCPP::VerbatimString},
        {"+ nil", QsciLexerCPP::Operator},         {"nil", QsciLexerCPP::KeywordSet2},
        {"return", QsciLexerCPP::Keyword},         {"42", QsciLexerCPP::Number},
    };
    CodeView view;
    view.SetLanguageFor("a.m");
    view.SetBytes(kSample);
    const ViewText text(view);
    text.Send(QsciScintillaBase::SCI_COLOURISE, 0, -1);
    for (const Case& c : kCases)
        EXPECT_EQ(text.StyleAt(static_cast<long>(std::string(kSample).find(c.word))), c.style) << c.word;
}

TEST(CodeView, EveryObjectiveCKeywordIsColoured)
{
    for (const char* word : {"@implementation", "@selector", "@protocol", "@synthesize", "SEL", "self", "super", "YES",
                             "NO", "instancetype"}) {
        CodeView view;
        view.SetLanguageFor("a.h");
        view.SetBytes(std::string(word) + " x");
        const ViewText text(view);
        text.Send(QsciScintillaBase::SCI_COLOURISE, 0, -1);
        EXPECT_EQ(text.StyleAt(1), QsciLexerCPP::KeywordSet2) << word;
    }
}

TEST(CodeView, OtherFilesHaveNoColours)
{
    CodeView view;
    view.SetLanguageFor("a.c");
    view.SetBytes(kSample);
    view.SetLanguageFor("/a.c/notes.txt");
    const ViewText text(view);
    text.Send(QsciScintillaBase::SCI_COLOURISE, 0, -1);
    for (long at = 0; at < text.Length(); at++)
        ASSERT_EQ(text.StyleAt(at), 0) << at;
}

TEST(CodeLexer, ANameOfAnotherLanguageIsNoKeyword)
{
    const struct {
        const char* path;
        const char* word;
        bool isKeyword;
    } kCases[] = {
        {"a.c", "restrict", true},   {"a.c", "class", false}, {"a.c", "id", false},    {"a.c", "readonly", false},
        {"a.cpp", "class", true},    {"a.cpp", "id", false},  {"a.h", "class", true},  {"a.h", "readonly", false},
        {"a.h", "@interface", true}, {"a.m", "id", true},     {"a.mm", "class", true}, {"a.m", "readonly", true},
    };
    CodeLexer lexer;
    for (const auto& [path, word, isKeyword] : kCases) {
        lexer.SetLanguageFor(path);
        bool isFound = false;
        for (const int set : {CodeLexer::kFirstSet, CodeLexer::kObjectiveCSet})
            isFound = isFound || QString(lexer.keywords(set)).split(' ').contains(word);
        EXPECT_EQ(isFound, isKeyword) << path << ' ' << word;
    }
}

TEST(CodeLexer, RecognisesFilesByTheirNames)
{
    for (const char* code : {"a.c", "a.h", "/x/b.MM", "c.m", "d.cpp", "e.C", "f.hxx"})
        EXPECT_TRUE(CodeLexer::IsCode(code)) << code;
    for (const char* other : {"", "c", "a.txt", "dir.c/file", "a.", "Makefile", "a.cpp.orig"})
        EXPECT_FALSE(CodeLexer::IsCode(other)) << other;
}

double Luminance(const QColor& colour)
{
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& a, const QColor& b)
{
    const double x = Luminance(a);
    const double y = Luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

TEST(EditorLook, CanBeRead)
{
    for (const bool dark : {false, true}) {
        const EditorColours& c = ColoursOf(dark);
        for (const QColor& ink : {c.text, c.keyword, c.comment, c.string, c.number, c.preprocessor, c.type}) {
            for (const QColor& paper : {c.paper, c.caretLine})
                EXPECT_GE(Contrast(ink, paper), 4.5) << dark << " " << ink.name().toStdString();
            EXPECT_GE(Contrast(ink, c.selection), 3) << dark << " selected " << ink.name().toStdString();
        }
        EXPECT_GE(Contrast(c.text, c.brace), 4.5) << dark;
        EXPECT_GE(Contrast(c.text, c.badBrace), 4.5) << dark;
        EXPECT_GE(Contrast(c.lineNumbers, c.margin), 4.5) << dark;
    }
}

TEST(CodeView, ColoursOnlyWhatItShows)
{
    std::string big;
    while (big.size() < 4'000'000)
        big += "int x = 0; // a line of code\n";
    CodeView view;
    view.resize(600, 400);
    view.show();
    view.SetBytes(big);
    view.SetLanguageFor("a.c");
    view.SetLook(view.Look());
    view.grab();
    const ViewText text(view);
    EXPECT_GT(text.Send(QsciScintillaBase::SCI_GETENDSTYLED), 0);
    EXPECT_LT(text.Send(QsciScintillaBase::SCI_GETENDSTYLED), text.Length() / 4);
}

TEST(CodeView, TheMarginGrowsWithTheNumberOfLines)
{
    CodeView view;
    view.SetBytes("a\n");
    const float narrow = view.TextBounds().left;
    view.SetBytes(std::string(100'000, '\n'));
    EXPECT_GT(view.TextBounds().left, narrow);
    view.SetBytes("a\n");
    EXPECT_EQ(view.TextBounds().left, narrow);
}

TEST(CodeView, TheMarginGrowsWhileLinesAreTyped)
{
    CodeView view;
    view.resize(300, 200);
    view.show();
    view.SetBytes(std::string(998, '\n'));
    const float narrow = view.TextBounds().left;
    QTest::keyClick(&view, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_GT(view.TextBounds().left, narrow);
}

TEST(CodeView, WrapsAndShowsBlanksOnRequest)
{
    CodeView view;
    const ViewText text(view);
    for (const bool on : {true, false}) {
        EditorLook look = view.Look();
        look.wraps = on;
        look.showsBlanks = on;
        view.SetLook(look);
        EXPECT_EQ(text.Send(QsciScintillaBase::SCI_GETWRAPMODE) != 0, on);
        EXPECT_EQ(text.Send(QsciScintillaBase::SCI_GETVIEWWS) != 0, on);
    }
}

TEST(CodeView, ADarkLookIsDark)
{
    CodeView view;
    view.resize(300, 100);
    view.show();
    EditorLook look = view.Look();
    look.dark = true;
    view.SetLook(look);
    view.SetLanguageFor("a.c");
    view.SetBytes("\nint x;\n");
    QCoreApplication::processEvents();
    const QImage seen = view.viewport()->grab().toImage();
    EXPECT_EQ(seen.pixelColor(seen.width() - 2, seen.height() - 2), ColoursOf(true).paper);
    EXPECT_EQ(seen.pixelColor(seen.width() - 2, 2), ColoursOf(true).caretLine);
    EXPECT_EQ(seen.pixelColor(2, seen.height() - 2), ColoursOf(true).margin);
}

// -------------------------------------------------------------------------------------------------------------- Braces

TEST(CodeView, FindsThePartnerOfABrace)
{
    const std::string far(300'000, ' ');
    struct Case {
        const char* why;
        std::string text;
        long brace;
        std::optional<long> partner;
    };
    const Case kCases[] = {
        {"forwards", "{ }", 0, 2},
        {"backwards", "{ }", 2, 0},
        {"over inner ones", "((a)(b))", 0, 7},
        {"each kind for itself", "( [ ) ]", 0, 4},
        {"not one in a comment", "{ /* } */ }", 0, 10},
        {"not one in a string", "( \")\" )", 0, 6},
        {"within a comment", "// (a) )", 3, 5},
        {"none", "( a", 0, std::nullopt},
        {"no brace", "a()", 0, std::nullopt},
        {"outside the text", "()", 9, std::nullopt},
        {"too far away", "{" + far + "}", 0, std::nullopt},
    };
    for (const Case& c : kCases) {
        CodeView view;
        view.SetLanguageFor("a.c");
        view.SetBytes(c.text);
        ViewText(view).Send(QsciScintillaBase::SCI_COLOURISE, 0, -1);
        EXPECT_EQ(view.PartnerOf(c.brace), c.partner) << c.why;
    }
}

bool Shows(CodeView& view, const QColor& colour)
{
    QCoreApplication::processEvents();
    const QImage seen = view.viewport()->grab().toImage();
    for (int y = 0; y < seen.height(); y++)
        for (int x = 0; x < seen.width(); x++)
            if (seen.pixelColor(x, y) == colour)
                return true;
    return false;
}

TEST(CodeView, ShowsPartnersWhileTyping)
{
    const EditorColours& colours = ColoursOf(false);
    CodeView view;
    view.resize(300, 100);
    view.show();
    QTest::keyClicks(&view, "f(a");
    EXPECT_FALSE(Shows(view, colours.brace));
    EXPECT_FALSE(Shows(view, colours.badBrace));
    QTest::keyClick(&view, ')');
    EXPECT_TRUE(Shows(view, colours.brace));
    QTest::keyClick(&view, ')');
    EXPECT_TRUE(Shows(view, colours.badBrace));
    EXPECT_FALSE(Shows(view, colours.brace));
}

// -------------------------------------------------------------------------------------------------------------- Places

TEST(CodeView, PointsAndOffsetsAgree)
{
    CodeView view;
    view.resize(600, 400);
    view.move(30, 40);
    view.show();
    view.SetBytes("first\n  second\nth\xc3\xafrd\n");
    for (const long offset : {0L, 3L, 6L, 10L, 17L, 19L}) {
        const BPoint base = view.BaselineAt(offset);
        const QPoint inside = view.viewport()->mapFromGlobal(QPointF(base.x, base.y).toPoint()) + QPoint(2, -3);
        const BPoint where = {static_cast<float>(inside.x()), static_cast<float>(inside.y())};
        EXPECT_EQ(view.OffsetAtPoint(where), offset);
        EXPECT_TRUE(view.TextBounds().Contains(where)) << offset;
    }
}

TEST(CodeView, TheBaselineIsTheBottomOfTheLetters)
{
    CodeView view;
    view.resize(300, 100);
    view.show();
    view.SetBytes("\nH");
    const QImage seen = view.viewport()->grab().toImage();
    const BPoint base = view.BaselineAt(1);
    const QPoint start = view.viewport()->mapFromGlobal(QPointF(base.x, base.y).toPoint());
    int lowest = -1;
    for (int y = 0; y < seen.height(); y++)
        for (int x = start.x(); x < start.x() + 8; x++)
            if (seen.pixelColor(x, y).lightness() < 128)
                lowest = y;
    EXPECT_NEAR(lowest + 1, start.y(), 1);
}

TEST(CodeView, GoesToLinesAndOffsets)
{
    CodeView view;
    view.resize(300, 200);
    view.show();
    std::string text;
    for (int line = 0; line < 1000; line++)
        text += "line\n";
    view.SetBytes(text);
    const ViewText inside(view);
    view.GoToLine(500);
    EXPECT_EQ(view.Caret(), 499 * 5);
    const long first = inside.Send(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE);
    EXPECT_LT(first, 497);
    EXPECT_GT(first, 499 - inside.Send(QsciScintillaBase::SCI_LINESONSCREEN));
    view.GoToLine(501); // seen already: nothing scrolls
    EXPECT_EQ(inside.Send(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE), first);
    view.GoToLine(5000);
    EXPECT_EQ(view.Caret(), 5000);
    view.GoToLine(0);
    EXPECT_EQ(view.Caret(), 0);
    view.GoTo(-7);
    EXPECT_EQ(view.Caret(), 0);
}

// ---------------------------------------------------------------------------------------------------------- Less room

class ShrinkingView : public ::testing::Test {
protected:
    ShrinkingView()
    {
        view.resize(300, 400);
        view.show();
        view.SetBytes(QByteArray("line\n").repeated(1000).toStdString());
    }
    long First() const { return ViewText(view).Send(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE); }
    long Last() const { return First() + ViewText(view).Send(QsciScintillaBase::SCI_LINESONSCREEN) - 1; }
    void ResizeTo(int height)
    {
        view.resize(300, height);
        QCoreApplication::processEvents();
    }

    CodeView view;
};

TEST_F(ShrinkingView, KeepsTheLineOfTheCaretInSight)
{
    view.GoToLine(Last() + 1);
    const long line = Last();
    ResizeTo(200);
    EXPECT_EQ(Last(), line) << "it stands at the lower edge";
    ResizeTo(400);
    EXPECT_LE(First(), line);
    EXPECT_GE(Last(), line);
}

TEST_F(ShrinkingView, StaysWhenTheCaretIsHighEnoughOrOutOfSight)
{
    view.GoToLine(2);
    ResizeTo(200);
    EXPECT_EQ(First(), 0);
    ResizeTo(400);
    ViewText(view).Send(QsciScintillaBase::SCI_SETFIRSTVISIBLELINE, 500);
    ResizeTo(200);
    EXPECT_EQ(First(), 500) << "the user has scrolled away from the caret";
}

} // namespace
} // namespace wren
