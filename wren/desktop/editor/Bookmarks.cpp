#include "wren/desktop/editor/Bookmarks.h"

#include <Qsci/qsciscintillabase.h>

namespace wren::bookmarks {

namespace {

using Sci = QsciScintillaBase;

constexpr long kMask = 1L << kMarker;

long CaretLine(const ViewText& text)
{
    return text.Send(Sci::SCI_LINEFROMPOSITION, text.Send(Sci::SCI_GETCURRENTPOS));
}

bool IsMarked(const ViewText& text, long line)
{
    return text.Send(Sci::SCI_MARKERGET, line) & kMask;
}

} // namespace

void SetUp(const ViewText& text)
{
    text.Send(Sci::SCI_MARKERDEFINE, kMarker, Sci::SC_MARK_LEFTRECT);
}

void SetLook(const ViewText& text, const EditorLook& look)
{
    const QColor& colour = ColoursOf(look.dark).keyword;
    text.Send(Sci::SCI_MARKERSETBACK, kMarker, colour.red() | colour.green() << 8 | colour.blue() << 16);
}

// A line whose neighbour with a mark was joined to it has the mark twice.
void Toggle(const ViewText& text)
{
    const long line = CaretLine(text);
    if (!IsMarked(text, line) && Lines(text).size() < kMost)
        text.Send(Sci::SCI_MARKERADD, line, kMarker);
    else
        text.Send(Sci::SCI_MARKERDELETE, line, -1);
}

std::vector<long> Lines(const ViewText& text)
{
    std::vector<long> lines;
    for (long line = text.Send(Sci::SCI_MARKERNEXT, 0, kMask); line >= 0;
         line = text.Send(Sci::SCI_MARKERNEXT, line + 1, kMask))
        lines.push_back(line);
    return lines;
}

void SetLines(const ViewText& text, const std::vector<long>& lines)
{
    text.Send(Sci::SCI_MARKERDELETEALL, kMarker);
    const long count = text.Send(Sci::SCI_GETLINECOUNT);
    for (const long line : lines)
        if (line >= 0 && line < count)
            text.Send(Sci::SCI_MARKERADD, line, kMarker);
}

std::optional<long> Next(const ViewText& text, bool backwards)
{
    const long line = CaretLine(text);
    const long last = text.Send(Sci::SCI_GETLINECOUNT) - 1;
    const unsigned way = backwards ? Sci::SCI_MARKERPREVIOUS : Sci::SCI_MARKERNEXT;
    const long beyond = backwards ? line - 1 : line + 1;
    long found = beyond < 0 || beyond > last ? -1 : text.Send(way, beyond, kMask);
    if (found < 0)
        found = text.Send(way, backwards ? last : 0, kMask);
    return found < 0 ? std::nullopt : std::optional(found);
}

} // namespace wren::bookmarks
