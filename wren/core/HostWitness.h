// Hears what the plug-in does to the editor.
#pragma once

#include "wren/core/Document.h"

#include "vetch/support/Types.h"

#include <string>

namespace wren {

// One operation a call, right after it was done, with its arguments as the plug-in gave them. A face that shows
// documents follows their edits from here; the others keep a log. Document thread.
class HostWitness {
public:
    virtual ~HostWitness() = default;

    virtual void EventAnswered(long /*event*/, long /*returned*/) {} // each call of the plug-in, when it is over

    virtual void UndoBegun(Document&, Selection /*before*/, const std::string& /*name*/) {}
    virtual void TextInserted(Document&, const std::string& /*text*/, long /*offset*/) {}
    virtual void TextDeleted(Document&, long /*offset*/, long /*length*/) {}
    virtual void Selected(Document&, Selection) {}

    virtual void CommandDone(long /*status*/) {}
    virtual void SettingRegistered(const std::string& /*name*/) {}
    virtual void CommandRegistered(const std::string& /*name*/, const std::string& /*help*/) {}
    virtual void PluginFlagsSet(long /*flags*/) {}
    virtual void ResourceIDsSet(long /*first*/, long /*second*/) {}
    virtual void SettingsWritten(const std::string& /*text*/) {}
    virtual void AppendedToWorksheet(const std::string& /*text*/, bool, bool, bool) {}
    virtual void MenuItemAdded(const std::string& /*menu*/, long /*index*/, const std::string& /*label*/,
                               const std::string& /*command*/, char /*key*/, uint32 /*modifiers*/)
    {
    }
    virtual void PreferencePanelRegistered(const std::string& /*identifier*/, const std::string& /*title*/,
                                           const std::string& /*icon*/)
    {
    }
};

} // namespace wren
