#include "wren/desktop/editor/Carets.h"

#include "wren/desktop/editor/EditorLook.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>

namespace wren::carets {

namespace {

using Sci = QsciScintillaBase;

long Count(const ViewText& text)
{
    return text.Send(Sci::SCI_GETSELECTIONS);
}

// Scintilla adds what equals the selection only while it allows several; else a click with Control would add one.
void AddNext(const ViewText& text)
{
    const Selection main = text.Selected();
    const bool isWord = main.start == main.end || text.Send(Sci::SCI_ISRANGEWORD, main.start, main.end);
    text.Send(Sci::SCI_SETSEARCHFLAGS, Sci::SCFIND_MATCHCASE | (isWord ? Sci::SCFIND_WHOLEWORD : 0));
    text.Send(Sci::SCI_TARGETWHOLEDOCUMENT);
    text.Send(Sci::SCI_SETMULTIPLESELECTION, true);
    text.Send(Sci::SCI_MULTIPLESELECTADDNEXT);
    text.Send(Sci::SCI_SETMULTIPLESELECTION, false);
}

void AddAll(const ViewText& text)
{
    if (text.Send(Sci::SCI_GETSELECTIONEMPTY))
        AddNext(text);
    for (long before = 0; before < Count(text) && Count(text) < kMost;) {
        before = Count(text);
        AddNext(text);
    }
}

void AddBeside(const ViewText& text, bool above)
{
    long outermost = text.Send(Sci::SCI_GETSELECTIONNCARET, 0);
    for (long each = 1; each < Count(text); ++each) {
        const long caret = text.Send(Sci::SCI_GETSELECTIONNCARET, each);
        outermost = above ? std::min(outermost, caret) : std::max(outermost, caret);
    }
    const long line = text.Send(Sci::SCI_LINEFROMPOSITION, outermost) + (above ? -1 : 1);
    if (line < 0 || line >= text.Send(Sci::SCI_GETLINECOUNT) || Count(text) >= kMost)
        return;
    const long place = text.Send(Sci::SCI_FINDCOLUMN, line, text.Send(Sci::SCI_GETCOLUMN, outermost));
    text.Send(Sci::SCI_ADDSELECTION, place, place);
    text.Send(Sci::SCI_SCROLLCARET);
}

long Number(const QColor& colour)
{
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

} // namespace

void SetUp(const ViewText& text)
{
    text.Send(Sci::SCI_SETMULTIPLESELECTION, false);
    text.Send(Sci::SCI_SETADDITIONALSELECTIONTYPING, true);
    text.Send(Sci::SCI_SETMULTIPASTE, Sci::SC_MULTIPASTE_EACH);
    text.Send(Sci::SCI_SETADDITIONALCARETSVISIBLE, true);
}

void SetLook(const ViewText& text, bool dark)
{
    const EditorColours& colours = ColoursOf(dark);
    text.Send(Sci::SCI_SETADDITIONALSELBACK, Number(colours.selection));
    text.Send(Sci::SCI_SETADDITIONALCARETFORE, Number(colours.text));
}

bool AreSeveral(const ViewText& text)
{
    return Count(text) > 1;
}

void Apply(const ViewText& text, CaretCommand command)
{
    switch (command) {
    case CaretCommand::NextMatch:
        return AddNext(text);
    case CaretCommand::AllMatches:
        return AddAll(text);
    case CaretCommand::LineAbove:
    case CaretCommand::LineBelow:
        return AddBeside(text, command == CaretCommand::LineAbove);
    }
}

void ToggleAt(const ViewText& text, long offset)
{
    for (long each = 0; each < Count(text); ++each)
        if (text.Send(Sci::SCI_GETSELECTIONNCARET, each) == offset) {
            if (Count(text) > 1)
                text.Send(Sci::SCI_DROPSELECTIONN, each);
            return;
        }
    text.Send(Sci::SCI_ADDSELECTION, offset, offset);
}

void IndentLines(const ViewText& text, Indentation indentation)
{
    for (long each = 0; each < Count(text); ++each) {
        const long caret = text.Send(Sci::SCI_GETSELECTIONNCARET, each);
        const long line = text.Send(Sci::SCI_LINEFROMPOSITION, caret);
        if (line == 0)
            continue;
        const long start = text.Send(Sci::SCI_POSITIONFROMLINE, line - 1);
        const std::string before = text.Copy(start, text.Send(Sci::SCI_GETLINEENDPOSITION, line - 1));
        const std::string blanks = IndentationAfter(before, indentation);
        text.Replace(caret, caret, blanks);
        const long behind = caret + static_cast<long>(blanks.size());
        text.Send(Sci::SCI_SETSELECTIONNANCHOR, each, behind);
        text.Send(Sci::SCI_SETSELECTIONNCARET, each, behind);
    }
}

} // namespace wren::carets
