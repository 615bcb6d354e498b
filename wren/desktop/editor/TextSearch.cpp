#include "wren/desktop/editor/TextSearch.h"

#include <Qsci/qsciscintillabase.h>

namespace wren::search {

namespace {

using Sci = QsciScintillaBase;

long FlagsOf(const TextSearch& search)
{
    long flags = search.matchCase ? Sci::SCFIND_MATCHCASE : 0;
    if (search.regularExpression)
        return flags | Sci::SCFIND_REGEXP | Sci::SCFIND_CXX11REGEX;
    return search.wholeWords ? flags | Sci::SCFIND_WHOLEWORD : flags;
}

// Scintilla's own flag for whole words says nothing to its regular expressions.
std::string PatternOf(const TextSearch& search)
{
    return search.regularExpression && search.wholeWords ? "\\b(?:" + search.text + ")\\b" : search.text;
}

long SearchTarget(const ViewText& text, const TextSearch& search, long start, long end)
{
    const std::string pattern = PatternOf(search);
    text.Send(Sci::SCI_SETSTATUS, Sci::SC_STATUS_OK);
    text.Send(Sci::SCI_SETSEARCHFLAGS, FlagsOf(search));
    text.Send(Sci::SCI_SETTARGETSTART, start);
    text.Send(Sci::SCI_SETTARGETEND, end);
    return text.Send(Sci::SCI_SEARCHINTARGET, static_cast<long>(pattern.size()), pattern.data());
}

long After(const ViewText& text, long offset)
{
    return text.Send(Sci::SCI_POSITIONAFTER, offset);
}

} // namespace

bool IsValid(const ViewText& text, const TextSearch& search)
{
    if (!search.regularExpression)
        return true;
    SearchTarget(text, search, 0, 0);
    return text.Send(Sci::SCI_GETSTATUS) == Sci::SC_STATUS_OK;
}

std::optional<Selection> FindIn(const ViewText& text, const TextSearch& search, long start, long end)
{
    if (search.text.empty())
        return std::nullopt;
    const long found =
        search.backwards ? SearchTarget(text, search, end, start) : SearchTarget(text, search, start, end);
    if (found < 0)
        return std::nullopt;
    return Selection{text.Send(Sci::SCI_GETTARGETSTART), text.Send(Sci::SCI_GETTARGETEND)};
}

std::optional<Selection> FindNext(const ViewText& text, const TextSearch& search, Selection from)
{
    const long length = text.Length();
    if (search.backwards) {
        const auto found = FindIn(text, search, 0, from.start);
        return found && *found != from ? found : FindIn(text, search, 0, length);
    }
    auto found = FindIn(text, search, from.end, length);
    // An expression that matches nothing ("^", "x*") would find the same place for ever.
    if (found && *found == from && from.end < length)
        found = FindIn(text, search, After(text, from.end), length);
    return found ? found : FindIn(text, search, 0, length);
}

bool Matches(const ViewText& text, const TextSearch& search, Selection selected)
{
    TextSearch forwards = search;
    forwards.backwards = false;
    return FindIn(text, forwards, selected.start, text.Length()) == selected;
}

long ReplaceFound(const ViewText& text, const TextSearch& search, const std::string& with)
{
    const unsigned message = search.regularExpression ? Sci::SCI_REPLACETARGETRE : Sci::SCI_REPLACETARGET;
    text.Send(message, static_cast<long>(with.size()), with.data());
    return text.Send(Sci::SCI_GETTARGETEND);
}

long ReplaceAll(const ViewText& text, const TextSearch& search, const std::string& with)
{
    TextSearch forwards = search;
    forwards.backwards = false;
    long count = 0;
    long at = 0;
    while (const auto found = FindIn(text, forwards, at, text.Length())) {
        count++;
        at = ReplaceFound(text, search, with);
        if (found->start == found->end) {
            if (at >= text.Length())
                break;
            at = After(text, at);
        }
    }
    return count;
}

long Count(const ViewText& text, const TextSearch& search, long atMost)
{
    TextSearch forwards = search;
    forwards.backwards = false;
    long count = 0;
    long at = 0;
    while (count < atMost) {
        const auto found = FindIn(text, forwards, at, text.Length());
        if (!found)
            break;
        count++;
        if (found->start == found->end && found->end >= text.Length())
            break;
        at = found->start == found->end ? After(text, found->end) : found->end;
    }
    return count;
}

} // namespace wren::search
