#include "wren/desktop/editor/TextLines.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <utility>

namespace wren {

using Sci = QsciScintillaBase;

long TextLines::LineAt(long offset) const
{
    offset = std::clamp(offset, 0L, text.Length());
    return HasLoneReturns() ? index.LineAt(Read(), offset) : text.Send(Sci::SCI_LINEFROMPOSITION, offset);
}

long TextLines::LineStart(long line) const
{
    if (line <= 0)
        return 0;
    if (HasLoneReturns())
        return index.LineStart(Read(), line);
    return line < text.Send(Sci::SCI_GETLINECOUNT) ? text.Send(Sci::SCI_POSITIONFROMLINE, line) : text.Length();
}

long TextLines::LineEnd(long line) const
{
    const long start = LineStart(line);
    const long next = LineStart(std::max(line, 0L) + 1);
    return next > start && text.CharAt(next - 1) == '\n' ? next - 1 : next;
}

// A change may part "\r\n" or put it together: the byte before it counts with it.
void TextLines::Changing(long offset, long removed, long added)
{
    CatchUp();
    loneReturns -= CountLoneReturns(offset - 1, offset + removed);
    inserted = Selection{offset, offset + added};
}

bool TextLines::HasLoneReturns() const
{
    CatchUp();
    return loneReturns > 0;
}

void TextLines::CatchUp() const
{
    const std::optional<Selection> now = std::exchange(inserted, std::nullopt);
    if (!now)
        return;
    loneReturns += CountLoneReturns(now->start - 1, now->end);
    index.TextChanged(now->start);
}

std::string_view TextLines::Read() const
{
    return text.Pointer(0, text.Length());
}

long TextLines::CountLoneReturns(long start, long end) const
{
    long count = 0;
    for (long at = text.Find('\r', std::max(start, 0L), end); at < end; at = text.Find('\r', at + 1, end))
        count += text.CharAt(at + 1) != '\n';
    return count;
}

} // namespace wren
