// One operation of the plug-in on the editor, with its arguments unchanged.
#pragma once

#include "vetch/support/Types.h"
#include "wren/text/TextStore.h"

#include <string>
#include <variant>

namespace wren {

struct EventAnswered { // a plug-in call ended
    long event = 0;
    long returned = 0;
};

// Documents, named by their identifiers. Offsets and lengths are bytes.
struct UndoBegun {
    long document = 0;
    Selection before;
    std::string name;
};
struct TextInserted {
    long document = 0;
    std::string text;
    long offset = 0;
};
struct TextDeleted {
    long document = 0;
    long offset = 0;
    long length = 0;
};
struct TextSelected {
    long document = 0;
    Selection selection;
};

// The rest of the editor.
struct CommandDone {
    long status = 0;
};
struct SettingRegistered {
    std::string name;
};
struct CommandRegistered {
    std::string name;
    std::string help;
};
struct PluginFlagsSet {
    long flags = 0;
};
struct ResourceIDsSet {
    long first = 0;
    long second = 0;
};
struct SettingsWritten {
    std::string text;
};
struct WorksheetAppended {
    std::string text;
    bool first = false;
    bool second = false;
    bool third = false;
};
struct MenuItemAdded {
    std::string menu;
    long index = 0;
    std::string label;
    std::string command;
    char key = 0; // 0 for no shortcut
    uint32 modifiers = 0;
};
struct PreferencePanelRegistered {
    std::string identifier;
    std::string title;
    std::string icon;
};

using HostChange = std::variant<EventAnswered, UndoBegun, TextInserted, TextDeleted, TextSelected, CommandDone,
                                SettingRegistered, CommandRegistered, PluginFlagsSet, ResourceIDsSet, SettingsWritten,
                                WorksheetAppended, MenuItemAdded, PreferencePanelRegistered>;

} // namespace wren
