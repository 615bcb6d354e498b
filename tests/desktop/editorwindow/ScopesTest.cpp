#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/symbols/Palette.h"
#include "wren/desktop/symbols/ScopeBar.h"

#include <QLineEdit>
#include <QTest>
#include <QToolButton>

namespace {

using Names = std::vector<std::string>;

class Scopes : public MeaningsStory {
protected:
    Names Path()
    {
        Names path;
        if (Symbols().Outlines().Scopes() == nullptr)
            return path;
        for (const QString& scope : Symbols().Outlines().Scopes()->Path())
            path.push_back(scope.toStdString());
        return path;
    }
    bool Becomes(const Names& path)
    {
        return Until([&] { return Path() == path; });
    }
    Names Offered()
    {
        Names names;
        for (const wren::PaletteItem& item : Symbols().Palettes().ThePalette().Items())
            names.push_back(item.name);
        return names;
    }
    void Click(int number)
    {
        QTest::mouseClick(Symbols().Outlines().Scopes()->findChildren<QToolButton*>()[number], Qt::LeftButton);
        Answered();
    }
};

constexpr const char* kText = "namespace draw {\nclass Pen {\n    int Width() { return 1|; }\n    int Height();\n};\n"
                              "class Ink {};\n}\nint Last() { return 1; }\n";

} // namespace

TEST_F(Scopes, AreThoseOfTheCaretInTheTextAsItIs)
{
    StartAt(kText);
    ASSERT_TRUE(Becomes({"draw", "Pen", "Width"}));
    Press("Down");
    EXPECT_TRUE(Becomes({"draw", "Pen", "Height"}));
    Press("Ctrl+End");
    EXPECT_TRUE(Becomes({"\u2026"})) << "what the text has";
    Type("int New();");
    EXPECT_TRUE(Becomes({"New"}));
}

TEST_F(Scopes, AClickListsWhatStandsBesideAndEnterGoesThere)
{
    StartAt(kText);
    ASSERT_TRUE(Becomes({"draw", "Pen", "Width"}));
    Click(1);
    EXPECT_EQ(Offered(), (Names{"Pen", "Ink"}));
    auto* field = Symbols().Palettes().ThePalette().findChild<QLineEdit*>();
    QTest::keyClicks(field, "ik");
    EXPECT_EQ(Offered(), (Names{"Ink"}));
    QTest::keyClick(field, Qt::Key_Return);
    Answered();
    EXPECT_EQ(Place(), "draw.cpp:6:7");
    EXPECT_TRUE(Becomes({"draw", "Ink"}));
}

TEST_F(Scopes, AKeyListsWhatStandsBesideTheInnermost)
{
    StartAt(kText);
    ASSERT_TRUE(Becomes({"draw", "Pen", "Width"}));
    Press("Ctrl+Shift+J");
    EXPECT_EQ(Offered(), (Names{"Width", "Height"}));
}

TEST_F(Scopes, ThePreferenceAndOtherFilesShowNone)
{
    StartAt(kText);
    ASSERT_NE(Symbols().Outlines().Scopes(), nullptr);
    InPreferences([](QWidget& dialog) { Tick(dialog, "Show the scopes of the caret above the text"); });
    EXPECT_EQ(Symbols().Outlines().Scopes(), nullptr);
    InPreferences([](QWidget& dialog) { Tick(dialog, "Show the scopes of the caret above the text"); });
    EXPECT_TRUE(Becomes({"draw", "Pen", "Width"}));
    Start({home.Write("project/notes.txt", "class Pen {};\n")});
    EXPECT_EQ(Symbols().Outlines().Scopes(), nullptr);
}

TEST_F(Scopes, TheBarTakesItsRoomFromTheText)
{
    StartAt(kText);
    ASSERT_TRUE(Becomes({"draw", "Pen", "Width"}));
    const QRect bar = Symbols().Outlines().Scopes()->geometry();
    EXPECT_GE(View().viewport()->geometry().top(), bar.bottom());
    EXPECT_EQ(bar.width(), View().width() - 2 * View().frameWidth());
}

TEST_F(Scopes, StandCloseTogether)
{
    StartAt(kText);
    ASSERT_TRUE(Becomes({"draw", "Pen", "Width"}));
    for (const QToolButton* button : Symbols().Outlines().Scopes()->findChildren<QToolButton*>()) {
        const QFontMetrics letters = button->fontMetrics();
        const int needed = button->iconSize().width() + letters.horizontalAdvance(button->text());
        EXPECT_GE(button->width(), needed) << button->text().toStdString();
        EXPECT_LE(button->width(), needed + 2 * letters.horizontalAdvance('x')) << button->text().toStdString();
    }
}
