// How text looks in the editor.
#pragma once

#include <QColor>
#include <QFont>

namespace wren {

struct EditorLook {
    QFont font;
    bool dark = false;
    int tabWidth = 4;             // columns
    bool indentsWithTabs = false; // for files that do not show what they use
    bool wraps = false;
    bool showsBlanks = false;
    bool showsGuides = false; // lines at the levels of indentation
};

// The colours of one of the two looks. Text is readable on the paper, the caret's line, a selection and a brace.
struct EditorColours {
    QColor text, paper, caretLine, selection, lineNumbers, margin;
    QColor keyword, comment, string, number, preprocessor, type;
    QColor match, selectedMatch, occurrence; // marks of what is searched for, and of the name at the caret
    QColor brace, badBrace;                  // behind a brace and its partner, and behind one that has none
};
const EditorColours& ColoursOf(bool dark);

} // namespace wren
