// Edits of the plug-in's among those of the user, in one history: Scintilla's.
#pragma once

#include "wren/core/TextStore.h"
#include "wren/desktop/editor/ViewText.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

// Scintilla's history takes numbers beside edits, and tells them when it goes back over them. Each group begins with
// the number of its name, so that it keeps its name whatever the user types, undoes and redoes around it.
class UndoGroups {
public:
    explicit UndoGroups(const ViewText& text) : text(text) {}

    void Begin(Selection before, const std::string& name);
    void Close();
    void Replace(long start, long end, std::string_view with); // in the open group, or in one of its own

    std::optional<std::string> Undo(); // as the store's
    void NumberUndone(int number);     // told by Scintilla during Undo()

    void Forget(); // all of the history

private:
    struct Group {
        std::string name;
        Selection before;
    };
    void Open();

    ViewText text;
    std::vector<Group> groups;
    std::optional<Group> next; // begun, and nothing edited yet: an empty group is nothing to undo
    std::optional<int> undone;
    bool open = false;
};

} // namespace wren
