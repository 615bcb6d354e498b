// Keeps the plug-in's edits and the user's in one history, Scintilla's.
#pragma once

#include "wren/desktop/editor/ViewText.h"
#include "wren/text/TextStore.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

// Scintilla's history takes numbers beside edits, and reports a number when it is undone. Each group begins with the
// number of its name, so that it keeps its name whatever the user types, undoes and redoes around it.
class UndoGroups {
public:
    explicit UndoGroups(const ViewText& text) : text(text) {}

    void Begin(Selection before, const std::string& name);
    void Close();
    void Replace(long start, long end, std::string_view with); // in the open group, or in one of its own

    std::optional<std::string> Undo(); // as the store's
    void NumberUndone(int number);     // Scintilla reports it during Undo()

    void Forget(); // all of the history

private:
    struct Group {
        std::string name;
        Selection before;
    };
    void Open();

    ViewText text;
    std::vector<Group> groups;
    std::optional<Group> next; // begun without an edit yet: an empty group cannot be undone
    std::optional<int> undone;
    bool open = false;
};

} // namespace wren
