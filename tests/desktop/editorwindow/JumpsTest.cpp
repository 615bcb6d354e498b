#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/editor/LandingMark.h"
#include "wren/desktop/symbols/MatchesPanel.h"

using ::testing::HasSubstr;

namespace {

class Jumps : public MeaningsStory {
protected:
    // The text that is marked as landed on; "" for none.
    std::string Marked()
    {
        const wren::CodeView& view = View();
        const auto send = [&](unsigned message, unsigned long at) {
            return view.SendScintilla(message, static_cast<unsigned long>(wren::LandingMark::kIndicator),
                                      static_cast<long>(at));
        };
        const auto caret = static_cast<unsigned long>(view.Caret());
        if (send(QsciScintilla::SCI_INDICATORVALUEAT, caret) == 0)
            return "";
        const long start = send(QsciScintilla::SCI_INDICATORSTART, caret);
        const long end = send(QsciScintilla::SCI_INDICATOREND, caret);
        return Text().substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
    }
};

constexpr const char* kDraw = "#include \"shapes.h\"\nvoid Draw(Text& text)\n{\n    text.Pa|int();\n}\n";

} // namespace

TEST_F(Jumps, ThePreferenceGivesF12ToThePlugin)
{
    StartAt(kDraw);
    InPreferences([](QWidget& dialog) { Tick(dialog, "F12 goes to what a name means"); });
    EXPECT_THAT(Content(SettingsFile()), HasSubstr("WrenJumpByMeaning off"));
    Ask("Alt+F12");
    EXPECT_EQ(Place(), "shapes.cpp:4:12");
    Press("Alt+Left");
    Ask("Alt+Shift+F12");
    EXPECT_EQ(Place(), "shapes.h:8:10");
}

TEST_F(Jumps, AKeyThatTheUserChoseForALookupStaysThePlugins)
{
    home.Write(".config/wren/settings", "WrenKeys DeclarationLookup=F12\n");
    home.Write("project/tags", "!_TAG_FILE_SORTED\t1\t//\nPaint\tshapes.h\t3;\"\tp\tclass:Shape\n");
    StartAt(kDraw);
    Ask("F12");
    EXPECT_EQ(Place(), "shapes.h:3:10") << "the line that the tags name, also when all questions are answered";
    EXPECT_EQ(Marked(), "Paint");
    Press("Alt+Left");
    Ask("Ctrl+F12");
    EXPECT_EQ(Place(), "shapes.h:8:10") << "the other key was not chosen";
}

TEST_F(Jumps, TheNameIsMarkedForAMoment)
{
    StartAt(kDraw);
    Ask("F12");
    EXPECT_EQ(Marked(), "Paint");
    ASSERT_TRUE(Until([this] { return Marked().empty(); }));
}

TEST_F(Jumps, WhatIsOnlyDeclaredIsSaid)
{
    StartAt("int Outside(int);\nint Run() { return Out|side(1); }\n");
    Ask("F12");
    EXPECT_THAT(Place(), HasSubstr(":1:5"));
    EXPECT_EQ(Status(), "\u201cOutside\u201d is only declared: no definition was found.");
}

TEST_F(Jumps, OnADefinitionWithoutADeclarationTheCaretStaysAndThatIsSaid)
{
    StartAt("int Al|one() { return 1; }\n");
    Ask("F12");
    EXPECT_THAT(Place(), HasSubstr(":1:5"));
    EXPECT_EQ(Status(), "\u201cAlone\u201d stands here; no other place declares or defines it.");
}

TEST_F(Jumps, ADefinitionThatHasMovedIsFoundByItsName)
{
    StartAt(kDraw);
    Start({home.Write("project/shapes.cpp", "\n\n\n#include \"shapes.h\"\n\nvoid Text::Paint() {}\n"),
           home / "project/draw.cpp"});
    View().GoTo(std::string(kDraw).find('|'));
    Ask("F12");
    EXPECT_EQ(Place(), "shapes.cpp:6:12");
}

TEST_F(Jumps, TheNameOfAStructureLeadsFromItsTypedefToItsBody)
{
    StartAt("typedef struct page page;\nstruct page { int n; };\npa|ge* first;\n");
    Ask("F12");
    EXPECT_THAT(Place(), HasSubstr(":2:8"));
}

TEST_F(Jumps, ALookupByTagsFindsTheNameNearALineThatEditsHaveMoved)
{
    const struct {
        const char* line; // that the tags name
        const char* place;
    } kCases[] = {
        {"3", "shapes.h:3:10"}, {"5", "shapes.h:3:10"},   {"7", "shapes.h:8:10"},
        {"1", "shapes.h:3:10"}, {"900", "shapes.h:8:10"},
    };
    home.Write(".config/wren/settings", "WrenKeys DeclarationLookup=F12\n");
    const std::string text = kDraw;
    const std::string file = home.Write("project/draw.cpp", std::string(text).erase(text.find('|'), 1));
    for (const auto& each : kCases) {
        home.Write("project/tags", std::string("!_TAG_FILE_SORTED\t1\t//\nPaint\tshapes.h\t") + each.line + ";\"\tp\n");
        Start({file});
        View().GoTo(static_cast<long>(text.find('|')));
        Ask("F12");
        EXPECT_EQ(Place(), each.place) << each.line;
        EXPECT_EQ(Marked(), "Paint") << each.line;
    }
}

TEST_F(Jumps, ALookupByTagsGoesToItsLineWhenNoLineHasTheName)
{
    home.Write(".config/wren/settings", "WrenKeys DeclarationLookup=F12\n");
    home.Write("project/tags", "!_TAG_FILE_SORTED\t1\t//\nElse\tshapes.h\t3;\"\tp\n");
    StartAt("El|se();\n");
    Ask("F12");
    EXPECT_EQ(Place(), "shapes.h:3:1");
    EXPECT_EQ(Marked(), "");
}
