#include "wren/desktop/display/FontTable.h"

#include <QApplication>
#include <QFont>
#include <QFontMetricsF>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using wren::FontTable;

float QtWidth(const QString& character, float size)
{
    return static_cast<float>(QFontMetricsF(FontTable::FontOf(size)).horizontalAdvance(character));
}

TEST(FontTable, PlainSizeIsTheDesktopsSize)
{
    EXPECT_EQ(FontTable::FontOf(12), QApplication::font());
}

TEST(FontTable, CharactersUpToLatinAreAsWideAsTheyAreDrawn)
{
    const FontTable fonts;
    for (const float size : {10.0f, 12.0f}) {
        for (char16_t character = ' '; character < 0x100; ++character) {
            const QString shown = QChar(character);
            EXPECT_FLOAT_EQ(fonts.StringWidth(shown.toStdString(), size), QtWidth(shown, size)) << int(character);
        }
    }
}

TEST(FontTable, OtherCharactersCountAsWide)
{
    const FontTable fonts;
    for (const char* text : {"Ł", "Ж", "Ω", "漢", "—", "😀"})
        EXPECT_GE(fonts.StringWidth(text, 12), QtWidth(QString::fromUtf8(text), 12)) << text;
}

TEST(FontTable, InvalidBytesCountAsReplacementCharacters)
{
    const FontTable fonts;
    const float sign = QtWidth(QChar(QChar::ReplacementCharacter), 12);
    EXPECT_FLOAT_EQ(fonts.StringWidth("\xff", 12), sign);
    EXPECT_FLOAT_EQ(fonts.StringWidth("\xc3", 12), sign);
    EXPECT_FLOAT_EQ(fonts.StringWidth("\xc0\xaf", 12), 2 * sign);
}

TEST(FontTable, OtherSizesScaleInProportion)
{
    const FontTable fonts;
    EXPECT_FLOAT_EQ(fonts.StringWidth("words", 24), 2 * fonts.StringWidth("words", 12));
    EXPECT_GE(fonts.Metrics(24).ascent, fonts.Metrics(12).ascent * 1.5f);
    EXPECT_EQ(fonts.StringWidth("", 12), 0);
}

TEST(FontTable, LinesAreHighEnoughForTheFont)
{
    const FontTable fonts;
    for (const float size : {9.0f, 10.0f, 12.0f, 18.0f})
        EXPECT_GE(fonts.LineHeight(size), QFontMetricsF(FontTable::FontOf(size)).height()) << size;
}

TEST(FontTable, ListsHaveTheFontThatTheyAreGiven)
{
    FontTable fonts;
    QFont larger = FontTable::FontOf(30);
    larger.setItalic(true);
    fonts.Use(larger);
    EXPECT_EQ(fonts.ListFont(12), larger);
    const auto width = static_cast<float>(QFontMetricsF(larger).horizontalAdvance('m'));
    EXPECT_FLOAT_EQ(fonts.StringWidth("m", 12), width);
    EXPECT_GE(fonts.LineHeight(12), QFontMetricsF(larger).height());
    EXPECT_EQ(FontTable::FontOf(12), QApplication::font()) << "dialogs keep the desktop's";
}

TEST(FontTable, ManyThreadsMayAsk)
{
    const FontTable fonts;
    const float expected = fonts.StringWidth("std::vector<int> größer", 12);
    std::vector<float> sums(8);
    {
        std::vector<std::jthread> threads;
        for (float& sum : sums)
            threads.emplace_back([&fonts, &sum] {
                for (int i = 0; i < 1000; ++i)
                    sum = fonts.StringWidth("std::vector<int> größer", 12);
            });
    }
    for (const float sum : sums)
        EXPECT_EQ(sum, expected);
}

} // namespace
