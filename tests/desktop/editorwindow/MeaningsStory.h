// A project whose names are understood, in front of a user.
#pragma once

#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/core/Host.h"
#include "wren/desktop/SymbolActions.h"

#include <gtest/gtest.h>
#include <string>

// The system has no headers.
class MeaningsStory : public EditorStory {
protected:
    MeaningsStory()
    {
        understandsNames = true;
        home.Write("project/.git/HEAD", "ref: refs/heads/main\n");
        home.Write("project/shapes.h", "class Shape {\npublic:\n    void Paint();\n    int Area() const;\n};\n"
                                       "class Text {\npublic:\n    void Paint();\n};\n");
        home.Write("project/shapes.cpp", "#include \"shapes.h\"\nvoid Shape::Paint() {}\n"
                                         "int Shape::Area() const { return 1; }\nvoid Text::Paint() {}\n");
    }
    // The caret is at "|".
    void StartAt(std::string text)
    {
        const size_t caret = text.find('|');
        text.erase(caret, 1);
        Start({home.Write("project/draw.cpp", text)});
        View().GoTo(static_cast<long>(caret));
        ASSERT_TRUE(Until([this] { return Symbols().Engine().Updates() > 0; })) << "the index was made";
    }
    void Answered()
    {
        ASSERT_TRUE(Until([this] { return Symbols().IsIdle(); }));
        Settle();
    }
    void Ask(const char* keys)
    {
        Press(keys);
        Answered();
    }
    wren::SymbolActions& Symbols() { return *TheEditor().Actions().symbols; }
    // The tab, the line and the column, from 1, where the user is.
    std::string Place()
    {
        const wren::Document& document = *TheEditor().TheHost().Current();
        const long line = document.LineAt(View().Caret());
        return CurrentTab() + ":" + std::to_string(line + 1) + ":" +
               std::to_string(View().Caret() - document.LineStart(line) + 1);
    }
};
