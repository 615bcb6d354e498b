#include "wren/desktop/editor/Folds.h"

#include "wren/desktop/editor/Bookmarks.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>

namespace wren::folds {

namespace {

using Sci = QsciScintillaBase;

constexpr int kMargin = 2;
constexpr long kMostColoured = 4L * 1024 * 1024; // bytes, for one command
constexpr long kMostKept = 10'000;               // folded blocks
constexpr long kAbove = 3;                       // lines; a function's name may stand above its brace

struct Mark {
    int number;
    int shape;
};

constexpr Mark kMarks[] = {
    {Sci::SC_MARKNUM_FOLDER, Sci::SC_MARK_ARROW},       {Sci::SC_MARKNUM_FOLDEROPEN, Sci::SC_MARK_ARROWDOWN},
    {Sci::SC_MARKNUM_FOLDEREND, Sci::SC_MARK_ARROW},    {Sci::SC_MARKNUM_FOLDEROPENMID, Sci::SC_MARK_ARROWDOWN},
    {Sci::SC_MARKNUM_FOLDERSUB, Sci::SC_MARK_EMPTY},    {Sci::SC_MARKNUM_FOLDERTAIL, Sci::SC_MARK_EMPTY},
    {Sci::SC_MARKNUM_FOLDERMIDTAIL, Sci::SC_MARK_EMPTY}};

// Scintilla's form of a colour.
long Number(const QColor& colour)
{
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

bool IsHeader(const ViewText& text, long line)
{
    return text.Send(Sci::SCI_GETFOLDLEVEL, line) & Sci::SC_FOLDLEVELHEADERFLAG;
}

bool IsFolded(const ViewText& text, long line)
{
    return !text.Send(Sci::SCI_GETFOLDEXPANDED, line);
}

// False when there is too much before the line that was never shown.
bool FindBlocksTo(const ViewText& text, long line)
{
    const long end = text.Send(Sci::SCI_GETLINEENDPOSITION, line);
    const long coloured = text.Send(Sci::SCI_GETENDSTYLED);
    if (end - coloured > kMostColoured)
        return false;
    if (end > coloured)
        text.Send(Sci::SCI_COLOURISE, coloured, std::min(end + 1, text.Length()));
    return true;
}

void ShowLinesAbove(const ViewText& text, long line)
{
    const long first = text.Send(Sci::SCI_VISIBLEFROMDOCLINE, line) - kAbove;
    if (first < text.Send(Sci::SCI_GETFIRSTVISIBLELINE))
        text.Send(Sci::SCI_SETFIRSTVISIBLELINE, std::max(first, 0L));
}

void Fold(const ViewText& text, long line)
{
    const long caret = text.Send(Sci::SCI_LINEFROMPOSITION, text.Send(Sci::SCI_GETCURRENTPOS));
    text.Send(Sci::SCI_FOLDLINE, line, Sci::SC_FOLDACTION_CONTRACT);
    if (caret > line && !text.Send(Sci::SCI_GETLINEVISIBLE, caret)) {
        const long end = text.Send(Sci::SCI_GETLINEENDPOSITION, line);
        text.Select(end, end);
        ShowLinesAbove(text, line);
    }
}

void Toggle(const ViewText& text)
{
    const long caret = text.Send(Sci::SCI_LINEFROMPOSITION, text.Send(Sci::SCI_GETCURRENTPOS));
    if (!FindBlocksTo(text, caret))
        return;
    const long line = IsHeader(text, caret) ? caret : text.Send(Sci::SCI_GETFOLDPARENT, caret);
    if (line < 0)
        return;
    if (IsFolded(text, line))
        text.Send(Sci::SCI_FOLDLINE, line, Sci::SC_FOLDACTION_EXPAND);
    else
        Fold(text, line);
}

void FoldAll(const ViewText& text)
{
    if (text.Length() > kMostForAll)
        return;
    text.Send(Sci::SCI_FOLDALL, Sci::SC_FOLDACTION_CONTRACT);
    long line = text.Send(Sci::SCI_LINEFROMPOSITION, text.Send(Sci::SCI_GETCURRENTPOS));
    if (text.Send(Sci::SCI_GETLINEVISIBLE, line))
        return;
    while (line > 0 && !text.Send(Sci::SCI_GETLINEVISIBLE, line))
        --line;
    const long end = text.Send(Sci::SCI_GETLINEENDPOSITION, line);
    text.Select(end, end);
}

} // namespace

void SetUp(const ViewText& text)
{
    text.Send(Sci::SCI_SETMARGINTYPEN, kMargin, Sci::SC_MARGIN_SYMBOL);
    text.Send(Sci::SCI_SETMARGINMASKN, kMargin,
              static_cast<long>(static_cast<unsigned>(Sci::SC_MASK_FOLDERS)) | 1L << bookmarks::kMarker);
    text.Send(Sci::SCI_SETMARGINSENSITIVEN, kMargin, true);
    // What is searched for, typed into or undone comes to light, and a block that is no block any more unfolds.
    text.Send(Sci::SCI_SETAUTOMATICFOLD,
              Sci::SC_AUTOMATICFOLD_SHOW | Sci::SC_AUTOMATICFOLD_CLICK | Sci::SC_AUTOMATICFOLD_CHANGE);
    text.Send(Sci::SCI_SETFOLDFLAGS, Sci::SC_FOLDFLAG_LINEAFTER_CONTRACTED);
    for (const Mark& mark : kMarks)
        text.Send(Sci::SCI_MARKERDEFINE, mark.number, mark.shape);
}

void SetLook(const ViewText& text, const EditorLook& look)
{
    const EditorColours& colours = ColoursOf(look.dark);
    text.Send(Sci::SCI_SETFOLDMARGINCOLOUR, true, Number(colours.margin));
    text.Send(Sci::SCI_SETFOLDMARGINHICOLOUR, true, Number(colours.margin));
    for (const Mark& mark : kMarks) {
        text.Send(Sci::SCI_MARKERSETFORE, mark.number, Number(colours.lineNumbers));
        text.Send(Sci::SCI_MARKERSETBACK, mark.number, Number(colours.lineNumbers));
    }
    const auto set = [&text](const char* name, const char* value) {
        text.Send(Sci::SCI_SETPROPERTY, reinterpret_cast<intptr_t>(name), value);
    };
    set("fold", "1");
    set("fold.compact", "0"); // empty lines below a block are not part of it
    set("fold.comment", "1");
    set("fold.preprocessor", "1");
    text.Send(Sci::SCI_SETMARGINWIDTHN, kMargin, text.Send(Sci::SCI_TEXTWIDTH, Sci::STYLE_LINENUMBER, "99"));
}

void Apply(const ViewText& text, FoldCommand command)
{
    switch (command) {
    case FoldCommand::Toggle:
        return Toggle(text);
    case FoldCommand::All:
        return FoldAll(text);
    case FoldCommand::None:
        for (const long line : Folded(text))
            text.Send(Sci::SCI_FOLDLINE, line, Sci::SC_FOLDACTION_EXPAND);
    }
}

void Reveal(const ViewText& text, long offset)
{
    if (!text.Send(Sci::SCI_GETALLLINESVISIBLE))
        text.Send(Sci::SCI_ENSUREVISIBLE, text.Send(Sci::SCI_LINEFROMPOSITION, offset));
}

std::vector<long> Folded(const ViewText& text)
{
    std::vector<long> lines;
    if (text.Send(Sci::SCI_GETALLLINESVISIBLE))
        return lines;
    for (long line = text.Send(Sci::SCI_CONTRACTEDFOLDNEXT, 0); line >= 0;
         line = text.Send(Sci::SCI_CONTRACTEDFOLDNEXT, line + 1))
        lines.push_back(line);
    return lines;
}

void FoldAgain(const ViewText& text, const std::vector<long>& lines)
{
    if (static_cast<long>(lines.size()) > kMostKept)
        return;
    for (const long line : lines)
        if (FindBlocksTo(text, line) && IsHeader(text, line) && !IsFolded(text, line))
            text.Send(Sci::SCI_FOLDLINE, line, Sci::SC_FOLDACTION_CONTRACT);
}

} // namespace wren::folds
