// How text looks in the editor.
#pragma once

#include <QColor>
#include <QFont>

namespace wren {

struct EditorLook {
    QFont font;
    bool dark = false;
    int tabWidth = 4;          // columns
    bool indentsWithTabs = false; // for files that do not show what they use
    bool wraps = false;
    bool showsBlanks = false;
};

// The colours of one of the two looks.
struct EditorColours {
    QColor text, paper, caretLine, selection, lineNumbers, margin;
    QColor keyword, comment, string, number, preprocessor, type, brace, badBrace;
};
const EditorColours& ColoursOf(bool dark);

} // namespace wren
