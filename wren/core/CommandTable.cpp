#include "wren/core/CommandTable.h"

#include "vetch/app/Modifiers.h"

#include <algorithm>

namespace wren {

namespace {

KeyBinding WithoutLocks(KeyBinding binding)
{
    return {binding.key, binding.modifiers & (B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY)};
}

} // namespace

void CommandTable::Register(const std::string& name, const std::string& help)
{
    for (Command& command : commands) {
        if (command.name == name) {
            command.help = help;
            return;
        }
    }
    commands.push_back({name, help});
}

void CommandTable::Bind(const std::string& command, KeyBinding binding)
{
    binding = WithoutLocks(binding);
    std::erase_if(bindings, [&](const auto& each) { return each.first == command || each.second == binding; });
    if (binding.key != 0)
        bindings.emplace_back(command, binding);
}

KeyBinding CommandTable::BindingOf(const std::string& command) const
{
    for (const auto& [name, binding] : bindings)
        if (name == command)
            return binding;
    return {};
}

std::optional<std::string> CommandTable::CommandFor(KeyBinding binding) const
{
    binding = WithoutLocks(binding);
    for (const auto& [name, bound] : bindings)
        if (bound == binding)
            return name;
    return std::nullopt;
}

} // namespace wren
