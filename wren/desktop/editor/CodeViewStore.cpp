#include "wren/desktop/editor/CodeViewStore.h"

#include <algorithm>

namespace wren {

long CodeView::Store::Length() const
{
    return Alive() ? Alive()->Length() : 0;
}

char CodeView::Store::CharAt(long offset) const
{
    return Alive() ? Alive()->CharAt(offset) : '\0';
}

void CodeView::Store::GetText(char* buffer, long offset, long length) const
{
    const long start = std::clamp(offset, 0L, Length());
    const long end = length > Length() - offset ? Length() : offset + length;
    if (start < end)
        Alive()->Copy(buffer + (start - offset), start, end);
}

std::string CodeView::Store::Text() const
{
    return Alive() ? Alive()->All() : "";
}

long CodeView::Store::LineAt(long offset) const
{
    return Alive() ? (*view)->lines.LineAt(offset) : 0;
}

long CodeView::Store::LineStart(long line) const
{
    return Alive() ? (*view)->lines.LineStart(line) : 0;
}

long CodeView::Store::LineEnd(long line) const
{
    return Alive() ? (*view)->lines.LineEnd(line) : 0;
}

Selection CodeView::Store::Selected() const
{
    return Alive() ? Alive()->Selected() : Selection();
}

void CodeView::Store::Select(long start, long end)
{
    if (Alive())
        (*view)->ByStore([&] { Alive()->Select(start, end); });
}

void CodeView::Store::SetText(std::string_view text)
{
    if (Alive())
        (*view)->SetBytes(text);
}

void CodeView::Store::BeginUndo(Selection before, const std::string& name)
{
    if (Alive())
        (*view)->groups.Begin(before, name);
}

void CodeView::Store::CloseUndo()
{
    if (Alive())
        (*view)->groups.Close();
}

void CodeView::Store::Insert(long offset, std::string_view inserted)
{
    offset = std::clamp(offset, 0L, Length());
    if (Alive() && !inserted.empty())
        (*view)->ByStore([&] { (*view)->groups.Replace(offset, offset, inserted); });
}

void CodeView::Store::Delete(long offset, long length)
{
    const long start = std::clamp(offset, 0L, Length());
    const long end = length > Length() - offset ? Length() : std::clamp(offset + length, 0L, Length());
    if (Alive() && start < end)
        (*view)->ByStore([&] { (*view)->groups.Replace(start, end, ""); });
}

std::optional<std::string> CodeView::Store::Undo()
{
    std::optional<std::string> name;
    if (Alive())
        (*view)->ByStore([&] { name = (*view)->groups.Undo(); });
    return name;
}

// Here, since a view need not know how documents see it.
std::unique_ptr<TextStore> CodeView::MakeStore()
{
    return std::make_unique<Store>(self);
}

} // namespace wren
