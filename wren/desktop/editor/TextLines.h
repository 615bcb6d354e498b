// Lines of a view's text as the host boundary counts them: from 0, and only "\n" ends one.
#pragma once

#include "wren/desktop/editor/ViewText.h"
#include "wren/text/LineIndex.h"

#include <optional>

namespace wren {

// Scintilla also ends a line at a lone carriage return. While the text has none of those, Scintilla's own lines are the
// answer, at no cost; a text with lone returns is read.
class TextLines {
public:
    explicit TextLines(const ViewText& text) : text(text) {}

    long LineAt(long offset) const;
    long LineStart(long line) const; // the text's length for a line that does not exist
    long LineEnd(long line) const;   // before its "\n"

    // Call it before every change.
    void Changing(long offset, long removed, long inserted);

private:
    bool HasLoneReturns() const;
    void CatchUp() const;
    std::string_view Read() const;
    long CountLoneReturns(long start, long end) const;

    ViewText text;
    mutable long loneReturns = 0;
    mutable std::optional<Selection> inserted; // by the last change, and not examined yet
    mutable LineIndex index;                   // used when there are lone returns
};

} // namespace wren
