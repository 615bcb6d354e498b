// The commands that the plug-in has registered, and the keys that run them.
#pragma once

#include "vetch/support/Types.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace wren {

// A key and the modifiers held with it. Only shift, command, control and option count: lock keys are never part of a
// binding.
struct KeyBinding {
    char key = 0; // 0: none
    uint32 modifiers = 0;

    bool operator==(const KeyBinding&) const = default;
};

// Document thread. Initially nothing is registered, and "SymbolCompletion" is bound to control and '.'.
class CommandTable {
public:
    struct Command {
        std::string name;
        std::string help;
    };

    void Register(const std::string& name, const std::string& help); // replaces an earlier help text
    const std::vector<Command>& Registered() const { return commands; }

    // A command has at most one binding, and a binding one command: the newest counts. Key 0 unbinds. The command need
    // not be registered, so that a user's bindings can be read before the plug-in is loaded.
    void Bind(const std::string& command, KeyBinding binding);
    KeyBinding BindingOf(const std::string& command) const; // key 0, modifiers 0 without one
    std::optional<std::string> CommandFor(KeyBinding binding) const;

private:
    std::vector<Command> commands;
    std::vector<std::pair<std::string, KeyBinding>> bindings = {{"SymbolCompletion", {'.', 0x4}}};
};

} // namespace wren
