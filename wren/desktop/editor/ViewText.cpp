#include "wren/desktop/editor/ViewText.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace wren {

using Sci = QsciScintillaBase;

ViewText::ViewText(const QsciScintillaBase& view)
    : function(reinterpret_cast<Function>(view.SendScintilla(Sci::SCI_GETDIRECTFUNCTION))),
      instance(view.SendScintilla(Sci::SCI_GETDIRECTPOINTER))
{
}

long ViewText::Send(unsigned message, long first, long second) const
{
    return function(instance, message, first, second);
}

long ViewText::Send(unsigned message, long first, const char* second) const
{
    return function(instance, message, first, reinterpret_cast<intptr_t>(second));
}

long ViewText::Length() const
{
    return Send(Sci::SCI_GETLENGTH);
}

char ViewText::CharAt(long offset) const
{
    return static_cast<char>(Send(Sci::SCI_GETCHARAT, offset));
}

int ViewText::StyleAt(long offset) const
{
    return static_cast<int>(Send(Sci::SCI_GETSTYLEAT, offset) & 0xff);
}

void ViewText::Copy(char* buffer, long start, long end) const
{
    // In two pieces, one on each side of Scintilla's gap: asked for both at once, it would move the bytes between.
    const long gap = std::clamp(Send(Sci::SCI_GETGAPPOSITION), start, end);
    const std::string_view before = Pointer(start, gap);
    const std::string_view behind = Pointer(gap, end);
    if (!before.empty())
        std::memcpy(buffer, before.data(), before.size());
    if (!behind.empty())
        std::memcpy(buffer + before.size(), behind.data(), behind.size());
}

std::string ViewText::Copy(long start, long end) const
{
    std::string copy(end - start, '\0');
    Copy(copy.data(), start, end);
    return copy;
}

std::string ViewText::All() const
{
    return Copy(0, Length());
}

long ViewText::Find(char byte, long start, long end) const
{
    const long gap = std::clamp(Send(Sci::SCI_GETGAPPOSITION), start, std::max(start, end));
    for (const auto& [from, to] : {std::pair(start, gap), std::pair(gap, end)}) {
        const size_t found = Pointer(from, to).find(byte);
        if (found != std::string_view::npos)
            return from + static_cast<long>(found);
    }
    return end;
}

std::string_view ViewText::Pointer(long start, long end) const
{
    if (start >= end)
        return {};
    const auto* bytes = reinterpret_cast<const char*>(Send(Sci::SCI_GETRANGEPOINTER, start, end - start));
    return {bytes, static_cast<size_t>(end - start)};
}

void ViewText::Replace(long start, long end, std::string_view with) const
{
    Send(Sci::SCI_SETTARGETRANGE, start, end);
    Send(Sci::SCI_REPLACETARGET, static_cast<long>(with.size()), with.empty() ? "" : with.data());
}

Selection ViewText::Selected() const
{
    return {Send(Sci::SCI_GETSELECTIONSTART), Send(Sci::SCI_GETSELECTIONEND)};
}

void ViewText::Select(long start, long end) const
{
    const long length = Length();
    start = std::clamp(start, 0L, length);
    end = std::clamp(end, 0L, length);
    Send(Sci::SCI_SETSEL, std::min(start, end), std::max(start, end));
}

} // namespace wren
