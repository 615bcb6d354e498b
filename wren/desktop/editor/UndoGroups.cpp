#include "wren/desktop/editor/UndoGroups.h"

#include "wren/text/PlainText.h"

#include <Qsci/qsciscintillabase.h>

namespace wren {

using Sci = QsciScintillaBase;

void UndoGroups::Begin(Selection before, const std::string& name)
{
    Close();
    next = Group{name, before};
}

void UndoGroups::Close()
{
    if (open)
        text.Send(Sci::SCI_ENDUNDOACTION);
    open = false;
    next.reset();
}

void UndoGroups::Replace(long start, long end, std::string_view with)
{
    const bool alone = !open && !next;
    if (alone)
        next = Group{PlainText::kEdit, text.Selected()};
    Open();
    text.Replace(start, end, with);
    if (alone)
        Close();
}

void UndoGroups::Open()
{
    if (open)
        return;
    text.Send(Sci::SCI_BEGINUNDOACTION);
    text.Send(Sci::SCI_ADDUNDOACTION, static_cast<long>(groups.size()));
    groups.push_back(*next);
    next.reset();
    open = true;
}

std::optional<std::string> UndoGroups::Undo()
{
    Close();
    if (!text.Send(Sci::SCI_CANUNDO))
        return std::nullopt;
    undone.reset();
    text.Send(Sci::SCI_UNDO);
    if (!undone)
        return PlainText::kEdit;
    const Group& group = groups.at(*undone);
    text.Select(group.before.start, group.before.end);
    return group.name;
}

void UndoGroups::NumberUndone(int number)
{
    undone = number;
}

void UndoGroups::Forget()
{
    Close();
    text.Send(Sci::SCI_EMPTYUNDOBUFFER);
    groups.clear();
}

} // namespace wren
