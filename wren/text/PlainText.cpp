#include "wren/text/PlainText.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace wren {

namespace {

// The caret's new offset once 'inserted' bytes replace 'removed' ones at 'offset'.
long Shifted(long caret, long offset, long removed, long inserted)
{
    if (caret <= offset)
        return caret;
    return std::max(caret - removed, offset) + inserted;
}

} // namespace

void PlainText::GetText(char* buffer, long offset, long length) const
{
    const long start = Clamp(offset);
    const long end = std::max(start, length > Length() - offset ? Length() : offset + length);
    if (length > 0)
        std::memcpy(buffer + (start - offset), text.data() + start, end - start);
}

long PlainText::LineAt(long offset) const
{
    return lines.LineAt(text, Clamp(offset));
}

long PlainText::LineStart(long line) const
{
    return lines.LineStart(text, line);
}

long PlainText::LineEnd(long line) const
{
    const size_t end = text.find('\n', LineStart(line));
    return end == std::string::npos ? Length() : static_cast<long>(end);
}

void PlainText::Select(long start, long end)
{
    start = Clamp(start);
    end = Clamp(end);
    selection = {std::min(start, end), std::max(start, end)};
}

void PlainText::SetText(std::string_view newText)
{
    text = newText;
    lines.TextChanged(0);
    selection = {};
    history.clear();
    groupOpen = false;
}

void PlainText::BeginUndo(Selection before, const std::string& name)
{
    CloseUndo();
    history.push_back({name, before, {}});
    groupOpen = true;
}

void PlainText::CloseUndo()
{
    if (groupOpen && history.back().edits.empty())
        history.pop_back();
    groupOpen = false;
}

void PlainText::Insert(long offset, std::string_view inserted)
{
    offset = Clamp(offset);
    if (inserted.empty())
        return;
    Remember({offset, "", std::string(inserted)});
    Replace(offset, 0, inserted);
}

void PlainText::Delete(long offset, long length)
{
    const long start = Clamp(offset);
    const long end = length > Length() - offset ? Length() : Clamp(offset + length);
    if (end <= start)
        return;
    Remember({start, text.substr(start, end - start), ""});
    Replace(start, end - start, "");
}

std::optional<std::string> PlainText::Undo()
{
    CloseUndo();
    if (history.empty())
        return std::nullopt;
    const Group group = std::move(history.back());
    history.pop_back();
    for (auto edit = group.edits.rbegin(); edit != group.edits.rend(); ++edit)
        Replace(edit->offset, static_cast<long>(edit->inserted.size()), edit->removed);
    Select(group.before.start, group.before.end);
    return group.name;
}

long PlainText::Clamp(long offset) const
{
    return std::clamp(offset, 0L, Length());
}

void PlainText::Replace(long offset, long length, std::string_view inserted)
{
    text.replace(offset, length, inserted);
    lines.TextChanged(offset);
    const long added = static_cast<long>(inserted.size());
    selection.start = Shifted(selection.start, offset, length, added);
    selection.end = Shifted(selection.end, offset, length, added);
}

void PlainText::Remember(Edit edit)
{
    if (!groupOpen)
        history.push_back({kEdit, selection, {}});
    history.back().edits.push_back(std::move(edit));
}

} // namespace wren
