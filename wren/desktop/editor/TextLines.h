// Lines of a view's text as the host boundary counts them: from 0, and only "\n" ends one.
#pragma once

#include "wren/core/LineIndex.h"
#include "wren/desktop/editor/ViewText.h"

namespace wren {

// Scintilla ends a line at a carriage return that stands alone, too. As long as the text has none of those, Scintilla's own
// lines are the answer, at no cost; a text that has some is read.
class TextLines {
public:
    explicit TextLines(const ViewText& text) : text(text) {}

    long LineAt(long offset) const;
    long LineStart(long line) const; // the length when there is no such line
    long LineEnd(long line) const;   // before its "\n"

    // Around every change.
    void Changing(long offset, long removed);
    void Changed(long offset, long inserted);

    bool HasLoneReturns() const { return loneReturns > 0; }

private:
    std::string_view Read() const;
    long CountLoneReturns(long start, long end) const;

    ViewText text;
    long loneReturns = 0;
    mutable LineIndex index; // used when there are some
};

} // namespace wren
