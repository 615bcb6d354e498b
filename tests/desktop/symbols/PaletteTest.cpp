#include "wren/desktop/symbols/Palette.h"

#include <QLineEdit>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

using ::testing::ElementsAre;

namespace {

// A window with a palette that offers what a test says.
class PaletteStory : public ::testing::Test {
protected:
    PaletteStory()
    {
        window.resize(800, 600);
        window.show();
        use.ask = [this](const QString& letters) { asked.push_back(letters.toStdString()); };
        use.choose = [this](const wren::PaletteItem& item, long line) {
            chosen.push_back(item.name + ":" + std::to_string(line));
        };
        QObject::connect(&palette, &wren::Palette::Closed, [this] { ++closed; });
    }
    void Offer(const std::vector<std::string>& names)
    {
        wren::PaletteAnswer answer;
        for (const std::string& name : names) {
            wren::PaletteItem item;
            item.name = name;
            answer.items.push_back(item);
        }
        palette.Show(std::move(answer));
    }
    void Press(Qt::Key key) { QTest::keyClick(palette.findChild<QLineEdit*>(), key); }
    void Type(const char* letters) { QTest::keyClicks(palette.findChild<QLineEdit*>(), letters); }

    QWidget window;
    wren::Palette palette{&window};
    wren::PaletteUse use;
    std::vector<std::string> asked;
    std::vector<std::string> chosen;
    int closed = 0;
};

} // namespace

TEST_F(PaletteStory, EveryLetterAsks)
{
    palette.Open(use);
    Type("ab");
    EXPECT_THAT(asked, ElementsAre("a", "ab"));
}

TEST_F(PaletteStory, OneThatListsWithoutLettersAsksAtOnce)
{
    use.listsWithoutLetters = true;
    palette.Open(use);
    EXPECT_THAT(asked, ElementsAre(""));
}

TEST_F(PaletteStory, EnterChoosesTheMarkedItemAndCloses)
{
    palette.Open(use);
    Type("o");
    Offer({"one", "two", "three"});
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_THAT(chosen, ElementsAre("two:0"));
    EXPECT_FALSE(palette.isVisible());
    EXPECT_EQ(closed, 1);
}

TEST_F(PaletteStory, ArrowsGoRoundAtTheEndsAndPagesStopThere)
{
    palette.Open(use);
    Offer({"one", "two", "three"});
    Press(Qt::Key_Up);
    EXPECT_EQ(palette.Marked(), 2);
    Press(Qt::Key_Down);
    EXPECT_EQ(palette.Marked(), 0);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(palette.Marked(), 2);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(palette.Marked(), 2);
}

TEST_F(PaletteStory, EscapeLeavesWithoutAChoice)
{
    palette.Open(use);
    Offer({"one"});
    Press(Qt::Key_Escape);
    EXPECT_THAT(chosen, ElementsAre());
    EXPECT_FALSE(palette.isVisible());
}

TEST_F(PaletteStory, EnterWithoutItemsKeepsItOpen)
{
    palette.Open(use);
    Type("zzz");
    Offer({});
    Press(Qt::Key_Return);
    EXPECT_TRUE(palette.isVisible());
}

struct TypedPlace {
    const char* typed;
    const char* letters;
    long line;
};

void PrintTo(const TypedPlace& place, std::ostream* out)
{
    *out << place.typed;
}

class PaletteLetters : public PaletteStory, public ::testing::WithParamInterface<TypedPlace> {};

TEST_P(PaletteLetters, ANumberBehindAColonIsALineAndTwoColonsAScope)
{
    palette.Open(use);
    Type(GetParam().typed);
    EXPECT_EQ(palette.Letters().toStdString(), GetParam().letters);
    Offer({"x"});
    Press(Qt::Key_Return);
    EXPECT_THAT(chosen, ElementsAre("x:" + std::to_string(GetParam().line)));
}

INSTANTIATE_TEST_SUITE_P(Words, PaletteLetters,
                         ::testing::Values(TypedPlace{"inode.c", "inode.c", 0}, TypedPlace{"inode.c:12", "inode.c", 12},
                                           TypedPlace{"inode.c:", "inode.c", 0}, TypedPlace{"Shape::", "Shape::", 0},
                                           TypedPlace{"Shape::Pa", "Shape::Pa", 0}, TypedPlace{"fs/in", "fs/in", 0}));
