#include "wren/desktop/editor/ChangeMarks.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

using Sci = QsciScintillaBase;

constexpr int kMarker = 1; // of Scintilla
constexpr long kMask = 1L << kMarker;
constexpr int kMargin = 3; // right of the folds
constexpr int kWidth = 3;  // pixels

} // namespace

ChangeMarks::ChangeMarks(const ViewText& text) : text(text) {}

void ChangeMarks::SetUp()
{
    text.Send(Sci::SCI_SETMARGINTYPEN, kMargin, Sci::SC_MARGIN_SYMBOL);
    text.Send(Sci::SCI_SETMARGINMASKN, kMargin, kMask);
    text.Send(Sci::SCI_SETMARGINWIDTHN, kMargin, kWidth);
    text.Send(Sci::SCI_MARKERDEFINE, kMarker, Sci::SC_MARK_FULLRECT);
}

void ChangeMarks::SetLook(const EditorLook& look)
{
    const QColor& colour = ColoursOf(look.dark).match;
    text.Send(Sci::SCI_MARKERSETBACK, kMarker, colour.red() | colour.green() << 8 | colour.blue() << 16);
}

// Scintilla tells of a change before it happens; afterwards, the base class would take long to hear of it. So what was
// inserted is looked at on the next occasion.
void ChangeMarks::Changing(long offset, long length, bool inserts)
{
    if (isHidden)
        return;
    Changed();
    const long line = text.Send(Sci::SCI_LINEFROMPOSITION, offset);
    if (!inserts)
        return Mark(line);
    came = {offset, length, text.Send(Sci::SCI_POSITIONFROMLINE, line) == offset,
            text.Send(Sci::SCI_GETLINEENDPOSITION, line) == offset};
}

// Whole lines that came before or behind a line have left it as it is.
void ChangeMarks::Changed()
{
    const Insertion inserted = std::exchange(came, {});
    if (inserted.length == 0)
        return;
    const long end = inserted.offset + inserted.length;
    long first = text.Send(Sci::SCI_LINEFROMPOSITION, inserted.offset);
    long last = text.Send(Sci::SCI_LINEFROMPOSITION, end);
    if (inserted.startedLine && last > first && text.Send(Sci::SCI_POSITIONFROMLINE, last) == end)
        --last;
    else if (inserted.endedLine && last > first && text.Send(Sci::SCI_GETLINEENDPOSITION, first) == inserted.offset)
        ++first;
    last = std::min(last, first + kMostAtOnce - 1);
    for (long line = first; line <= last; ++line)
        Mark(line);
}

void ChangeMarks::Mark(long line) const
{
    if (!(text.Send(Sci::SCI_MARKERGET, line) & kMask))
        text.Send(Sci::SCI_MARKERADD, line, kMarker);
}

void ChangeMarks::Forget()
{
    came = {};
    text.Send(Sci::SCI_MARKERDELETEALL, kMarker);
}

std::vector<long> ChangeMarks::Lines() const
{
    std::vector<long> lines;
    for (long line = text.Send(Sci::SCI_MARKERNEXT, 0, kMask); line >= 0;
         line = text.Send(Sci::SCI_MARKERNEXT, line + 1, kMask))
        lines.push_back(line);
    return lines;
}

void ChangeMarks::Hide()
{
    isHidden = true;
    Forget();
    text.Send(Sci::SCI_SETMARGINWIDTHN, kMargin, 0L);
}

} // namespace wren
