#include "wren/core/Witnesses.h"

namespace wren {

void Witnesses::EventAnswered(long event, long returned)
{
    for (HostWitness* witness : all)
        witness->EventAnswered(event, returned);
}

void Witnesses::UndoBegun(Document& document, Selection before, const std::string& name)
{
    for (HostWitness* witness : all)
        witness->UndoBegun(document, before, name);
}

void Witnesses::TextInserted(Document& document, const std::string& text, long offset)
{
    for (HostWitness* witness : all)
        witness->TextInserted(document, text, offset);
}

void Witnesses::TextDeleted(Document& document, long offset, long length)
{
    for (HostWitness* witness : all)
        witness->TextDeleted(document, offset, length);
}

void Witnesses::Selected(Document& document, Selection selection)
{
    for (HostWitness* witness : all)
        witness->Selected(document, selection);
}

void Witnesses::CommandDone(long status)
{
    for (HostWitness* witness : all)
        witness->CommandDone(status);
}

void Witnesses::SettingRegistered(const std::string& name)
{
    for (HostWitness* witness : all)
        witness->SettingRegistered(name);
}

void Witnesses::CommandRegistered(const std::string& name, const std::string& help)
{
    for (HostWitness* witness : all)
        witness->CommandRegistered(name, help);
}

void Witnesses::PluginFlagsSet(long flags)
{
    for (HostWitness* witness : all)
        witness->PluginFlagsSet(flags);
}

void Witnesses::ResourceIDsSet(long first, long second)
{
    for (HostWitness* witness : all)
        witness->ResourceIDsSet(first, second);
}

void Witnesses::SettingsWritten(const std::string& text)
{
    for (HostWitness* witness : all)
        witness->SettingsWritten(text);
}

void Witnesses::AppendedToWorksheet(const std::string& text, bool first, bool second, bool third)
{
    for (HostWitness* witness : all)
        witness->AppendedToWorksheet(text, first, second, third);
}

void Witnesses::MenuItemAdded(const std::string& menu, long index, const std::string& label, const std::string& command,
                              char key, uint32 modifiers)
{
    for (HostWitness* witness : all)
        witness->MenuItemAdded(menu, index, label, command, key, modifiers);
}

void Witnesses::PreferencePanelRegistered(const std::string& identifier, const std::string& title,
                                          const std::string& icon)
{
    for (HostWitness* witness : all)
        witness->PreferencePanelRegistered(identifier, title, icon);
}

} // namespace wren
