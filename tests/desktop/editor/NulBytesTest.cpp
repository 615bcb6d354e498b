// A NUL byte is a byte as any other, wherever a text comes from.
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/FindBar.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>

namespace wren {
namespace {

using std::string_literals::operator""s;

class NulBytes : public ::testing::Test {
protected:
    NulBytes() { view.resize(400, 300); }

    static QMimeData* Holding(const std::string& text)
    {
        auto* data = new QMimeData;
        data->setText(QString::fromStdString(text));
        return data;
    }
    void Paste(const std::string& text)
    {
        QApplication::clipboard()->setMimeData(Holding(text));
        view.paste();
    }
    void Drop(const QMimeData& data, long offset)
    {
        view.show();
        const int x = static_cast<int>(view.SendScintilla(CodeView::SCI_POINTXFROMPOSITION, 0, offset));
        const int y = static_cast<int>(view.SendScintilla(CodeView::SCI_POINTYFROMPOSITION, 0, offset));
        QDragEnterEvent enter(QPoint(x, y), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &enter);
        QDropEvent drop(QPointF(x, y), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &drop);
        EXPECT_TRUE(drop.isAccepted());
    }
    CodeView view;
};

struct Pasted {
    const char* why;
    std::string before; // the second to the fourth byte are selected
    std::string pasted;
    std::string after;
};

const Pasted kPasted[] = {
    {"in the middle", "abcde", "x\0y"s, "ax\0ye"s},
    {"alone", "abcde", "\0"s, "a\0e"s},
    {"at both ends", "abcde", "\0x\0"s, "a\0x\0e"s},
    {"Windows' line ends become the text's", "abcde\n", "x\0\r\ny\r\n"s, "ax\0\ny\ne\n"s},
    {"the text's line ends are Windows'", "abcde\r\n", "x\0\ny\r"s, "ax\0\r\ny\r\ne\r\n"s},
    {"characters of several bytes", "abcde", "\xc3\xa4\0\xe2\x82\xac"s, "a\xc3\xa4\0\xe2\x82\xac"s + "e"},
    {"a text without one", "abcde", "xy", "axye"},
};

TEST_F(NulBytes, ArePastedWithTheTextBehindThem)
{
    for (const Pasted& each : kPasted) {
        view.SetBytes(each.before);
        ViewText(view).Select(1, 4);
        Paste(each.pasted);
        EXPECT_EQ(view.Bytes(), each.after) << each.why;
        EXPECT_TRUE(view.IsModified()) << each.why;
        view.undo();
        EXPECT_EQ(view.Bytes(), each.before) << each.why << ": one step to undo";
    }
}

TEST_F(NulBytes, AreCopiedAndCutFromOneViewToAnother)
{
    CodeView other;
    other.SetBytes("a\0\xff\0b"s);
    ViewText(other).Select(1, 4);
    other.cut();
    EXPECT_EQ(other.Bytes(), "ab");
    view.paste();
    view.paste();
    EXPECT_EQ(view.Bytes(), "\0\xff\0\0\xff\0"s);
}

TEST_F(NulBytes, AreCopiedInARectangle)
{
    view.SetBytes("a\0b\nc\0d\n"s);
    view.SendScintilla(CodeView::SCI_SETRECTANGULARSELECTIONANCHOR, 1ul);
    view.SendScintilla(CodeView::SCI_SETRECTANGULARSELECTIONCARET, 6ul);
    view.copy();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "\0\n\0\n"s);
}

TEST_F(NulBytes, AreDropped)
{
    view.SetBytes("abcd");
    const std::unique_ptr<QMimeData> data(Holding("x\0y"s));
    Drop(*data, 2);
    EXPECT_EQ(view.Bytes(), "abx\0ycd"s);
    EXPECT_EQ(ViewText(view).Selected(), (Selection{2, 5}));
    view.undo();
    EXPECT_EQ(view.Bytes(), "abcd");
}

TEST_F(NulBytes, AreNotPastedIntoAReadOnlyText)
{
    view.SetBytes("abcd");
    view.setReadOnly(true);
    Paste("x\0y"s);
    EXPECT_EQ(view.Bytes(), "abcd");
}

struct Search {
    const char* why;
    TextSearch search;
    std::string with;
    std::string after; // of "a\0b A\0b a\0bc"
};

const Search kSearches[] = {
    {"in any case", {"a\0b"s, false, false, false, false}, "x\0y"s, "x\0y x\0y x\0yc"s},
    {"in that case", {"a\0b"s, false, true, false, false}, "x", "x A\0b xc"s},
    {"whole words", {"a\0b"s, false, true, true, false}, "x", "x A\0b a\0bc"s},
    {"an expression that names it", {"a\\x00(b)", true, true, false, false}, "\\1\0"s, "b\0 A\0b b\0c"s},
    {"an expression with it", {"a\0(b)"s, true, true, false, false}, "\\1"s, "b A\0b bc"s},
    {"what is behind it", {"bc", false, true, false, false}, "", "a\0b A\0b a\0"s},
};

TEST_F(NulBytes, AreFoundAndReplaced)
{
    for (const Search& each : kSearches) {
        view.SetBytes("a\0b A\0b a\0bc"s);
        EXPECT_GT(view.Count(each.search, 100), 0) << each.why;
        EXPECT_TRUE(view.Find(each.search)) << each.why;
        view.ReplaceAll(each.search, each.with);
        EXPECT_EQ(view.Bytes(), each.after) << each.why;
    }
}

TEST_F(NulBytes, AreFoundByABarThatOpensOnASelection)
{
    FindBar bar;
    bar.SetView(&view);
    view.SetBytes("a\0b a\0c"s);
    ViewText(view).Select(0, 3);
    bar.Open();
    EXPECT_EQ(bar.Message(), "1 of 1");
    EXPECT_EQ(bar.findChild<QLineEdit*>("find")->text().toStdString(), "a\0b"s);
}

TEST_F(NulBytes, AreKeptWhenATextIsReadAgain)
{
    view.SetBytes("a\0b\n"s);
    view.ReadAgain("a\0c\0\nd"s);
    EXPECT_EQ(view.Bytes(), "a\0c\0\nd"s);
    view.undo();
    EXPECT_EQ(view.Bytes(), "a\0b\n"s);
}

} // namespace
} // namespace wren
