// Lines of a view's text as the host boundary counts them: from 0, and only "\n" ends one.
#pragma once

#include "wren/core/LineIndex.h"
#include "wren/desktop/editor/ViewText.h"

#include <optional>

namespace wren {

// Scintilla ends a line at a carriage return that stands alone, too. As long as the text has none of those, Scintilla's
// own lines are the answer, at no cost; a text that has some is read.
class TextLines {
public:
    explicit TextLines(const ViewText& text) : text(text) {}

    long LineAt(long offset) const;
    long LineStart(long line) const; // the length when there is no such line
    long LineEnd(long line) const;   // before its "\n"

    // Before every change.
    void Changing(long offset, long removed, long inserted);

private:
    bool HasLoneReturns() const;
    void CatchUp() const;
    std::string_view Read() const;
    long CountLoneReturns(long start, long end) const;

    ViewText text;
    mutable long loneReturns = 0;
    mutable std::optional<Selection> inserted; // by the last change, and not looked at yet
    mutable LineIndex index;                   // used when there are lone returns
};

} // namespace wren
