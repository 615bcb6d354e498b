#include "wren/desktop/editor/LineCommands.h"

#include "wren/desktop/editor/CodeLexer.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace wren {

namespace {

using Sci = QsciScintillaBase;

// Files of a source tree whose comments begin with "#", by the end of their names or by the names.
constexpr std::string_view kHashed[] = {
    ".py",         ".sh",          ".bash",           ".zsh",         ".cmake",  ".mk",
    ".yml",        ".yaml",        ".toml",           ".conf",        ".cfg",    ".pl",
    ".rb",         ".tcl",         "/Makefile",       "/GNUmakefile", "/Kbuild", "/Kconfig",
    "/.gitignore", "/.wrenignore", "/CMakeLists.txt", "/Dockerfile"};

struct Lines {
    long first = 0; // as Scintilla counts them, from 0
    long last = 0;
};

long LineOf(const ViewText& text, long offset)
{
    return text.Send(Sci::SCI_LINEFROMPOSITION, offset);
}

long StartOf(const ViewText& text, long line)
{
    return text.Send(Sci::SCI_POSITIONFROMLINE, line);
}

Lines SelectedLines(const ViewText& text)
{
    const Selection selected = text.Selected();
    Lines lines{LineOf(text, selected.start), LineOf(text, selected.end)};
    if (lines.last > lines.first && StartOf(text, lines.last) == selected.end)
        --lines.last;
    return lines;
}

// Where the line's first character stands that is no blank; absent for an empty line.
std::optional<long> FirstInk(const ViewText& text, long line)
{
    const long place = text.Send(Sci::SCI_GETLINEINDENTPOSITION, line);
    return place == text.Send(Sci::SCI_GETLINEENDPOSITION, line) ? std::nullopt : std::optional(place);
}

bool HasMark(const ViewText& text, long place, std::string_view mark)
{
    const long end = std::min(place + static_cast<long>(mark.size()), text.Length());
    return text.Copy(place, end) == mark;
}

// The marks stand below each other, at the smallest indentation.
void AddMarks(const ViewText& text, Lines lines, std::string_view mark)
{
    long column = -1;
    for (long line = lines.first; line <= lines.last; ++line)
        if (const std::optional<long> ink = FirstInk(text, line)) {
            const long own = text.Send(Sci::SCI_GETCOLUMN, *ink);
            column = column < 0 ? own : std::min(column, own);
        }
    const std::string added = std::string(mark) + " ";
    for (long line = lines.first; line <= lines.last; ++line)
        if (FirstInk(text, line)) {
            const long place = text.Send(Sci::SCI_FINDCOLUMN, line, column);
            text.Replace(place, place, added);
        }
}

void RemoveMarks(const ViewText& text, Lines lines, std::string_view mark)
{
    for (long line = lines.first; line <= lines.last; ++line)
        if (const std::optional<long> ink = FirstInk(text, line)) {
            const long behind = *ink + static_cast<long>(mark.size());
            text.Replace(*ink, text.CharAt(behind) == ' ' ? behind + 1 : behind, "");
        }
}

void ToggleComment(const ViewText& text, Lines lines, std::string_view mark)
{
    bool isAnyText = false;
    bool areAllMarked = true;
    for (long line = lines.first; line <= lines.last; ++line)
        if (const std::optional<long> ink = FirstInk(text, line)) {
            isAnyText = true;
            areAllMarked = areAllMarked && HasMark(text, *ink, mark);
        }
    if (isAnyText && areAllMarked)
        RemoveMarks(text, lines, mark);
    else if (isAnyText)
        AddMarks(text, lines, mark);
}

// Of the last line of a text, the line break before it.
void Delete(const ViewText& text, Lines lines)
{
    long start = StartOf(text, lines.first);
    const long end = lines.last + 1 < text.Send(Sci::SCI_GETLINECOUNT) ? StartOf(text, lines.last + 1) : text.Length();
    if (end == text.Length() && lines.first > 0 && end == text.Send(Sci::SCI_GETLINEENDPOSITION, lines.last))
        start = text.Send(Sci::SCI_GETLINEENDPOSITION, lines.first - 1);
    text.Replace(start, end, "");
    text.Select(start, start);
}

// With the line below when only one is selected. One blank stands for what was between two lines.
void Join(const ViewText& text, Lines lines)
{
    const long last = std::max(lines.last, lines.first + 1);
    for (long count = last - lines.first; count > 0 && lines.first + 1 < text.Send(Sci::SCI_GETLINECOUNT); --count) {
        long end = text.Send(Sci::SCI_GETLINEENDPOSITION, lines.first);
        const long next = text.Send(Sci::SCI_GETLINEINDENTPOSITION, lines.first + 1);
        const bool isEmpty = next == text.Send(Sci::SCI_GETLINEENDPOSITION, lines.first + 1);
        while (end > StartOf(text, lines.first) && (text.CharAt(end - 1) == ' ' || text.CharAt(end - 1) == '\t'))
            --end;
        const bool needsBlank = !isEmpty && end > StartOf(text, lines.first);
        text.Replace(end, next, needsBlank ? " " : "");
        text.Select(end, end);
    }
}

} // namespace

std::string_view CommentMark(const std::string& path)
{
    if (CodeLexer::IsCode(path))
        return "//";
    const std::string whole = "/" + path;
    const bool isHashed =
        std::any_of(std::begin(kHashed), std::end(kHashed), [&](std::string_view end) { return whole.ends_with(end); });
    return isHashed ? "#" : "";
}

void ApplyToLines(const ViewText& text, LineCommand command, std::string_view mark)
{
    switch (command) {
    case LineCommand::ToggleComment:
        return mark.empty() ? void() : ToggleComment(text, SelectedLines(text), mark);
    case LineCommand::MoveUp:
        text.Send(Sci::SCI_MOVESELECTEDLINESUP);
        return;
    case LineCommand::MoveDown:
        text.Send(Sci::SCI_MOVESELECTEDLINESDOWN);
        return;
    case LineCommand::Duplicate:
        text.Send(Sci::SCI_SELECTIONDUPLICATE);
        return;
    case LineCommand::Delete:
        return Delete(text, SelectedLines(text));
    case LineCommand::Join:
        return Join(text, SelectedLines(text));
    case LineCommand::UpperCase:
        text.Send(Sci::SCI_UPPERCASE);
        return;
    case LineCommand::LowerCase:
        text.Send(Sci::SCI_LOWERCASE);
        return;
    }
}

void TrimLineEnds(const ViewText& text)
{
    for (long line = text.Send(Sci::SCI_GETLINECOUNT) - 1; line >= 0; --line) {
        const long end = text.Send(Sci::SCI_GETLINEENDPOSITION, line);
        const long start = StartOf(text, line);
        long ink = end;
        while (ink > start && (text.CharAt(ink - 1) == ' ' || text.CharAt(ink - 1) == '\t'))
            --ink;
        if (ink < end)
            text.Send(Sci::SCI_DELETERANGE, ink, end - ink);
    }
}

void EndLastLine(const ViewText& text)
{
    const long end = text.Length();
    if (StartOf(text, LineOf(text, end)) == end)
        return;
    const long mode = text.Send(Sci::SCI_GETEOLMODE);
    text.Replace(end, end, mode == Sci::SC_EOL_CRLF ? "\r\n" : mode == Sci::SC_EOL_CR ? "\r" : "\n");
}

} // namespace wren
