// Several that hear what the plug-in does to the editor, in place of one.
#pragma once

#include "wren/core/HostWitness.h"

#include <utility>
#include <vector>

namespace wren {

// Each is told in the order in which they are given. Borrowed.
class Witnesses final : public HostWitness {
public:
    explicit Witnesses(std::vector<HostWitness*> all) : all(std::move(all)) {}

    void EventAnswered(long event, long returned) override;
    void UndoBegun(Document& document, Selection before, const std::string& name) override;
    void TextInserted(Document& document, const std::string& text, long offset) override;
    void TextDeleted(Document& document, long offset, long length) override;
    void Selected(Document& document, Selection selection) override;
    void CommandDone(long status) override;
    void SettingRegistered(const std::string& name) override;
    void CommandRegistered(const std::string& name, const std::string& help) override;
    void PluginFlagsSet(long flags) override;
    void ResourceIDsSet(long first, long second) override;
    void SettingsWritten(const std::string& text) override;
    void AppendedToWorksheet(const std::string& text, bool first, bool second, bool third) override;
    void MenuItemAdded(const std::string& menu, long index, const std::string& label, const std::string& command,
                       char key, uint32 modifiers) override;
    void PreferencePanelRegistered(const std::string& identifier, const std::string& title,
                                   const std::string& icon) override;

private:
    const std::vector<HostWitness*> all;
};

} // namespace wren
