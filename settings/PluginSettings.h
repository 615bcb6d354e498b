// All settings of a plug-in, for the host.
#pragma once

#include "settings/PluginSetting.h"

#include <string>
#include <vector>

// A derived class has the settings as members and registers each in its constructor. Document thread only.
class PluginSettings {
public:
    PluginSettings() = default;
    PluginSettings(const PluginSettings&) = delete;
    PluginSettings& operator=(const PluginSettings&) = delete;
    virtual ~PluginSettings() = default;

    // Registers every name with the host, in the order of registration here.
    virtual void Register(PluginInterface* host);

    // Applies one stored line, split into words: the name, the value's words, null. False, without a change, for an
    // unknown name or a malformed value.
    virtual bool HandleSettingsCommand(PluginInterface* host, const char*** args);

    // Writes a line for each setting that differs from its default.
    virtual void Save(PluginInterface* host);

    // The text form of one setting; false, with 'value' unchanged, for an unknown name.
    virtual bool ReturnSettingValue(PluginInterface* host, const char* name, std::string& value) const;

protected:
    std::vector<PluginSettingBase*> settings; // borrowed

private:
    PluginSettingBase* Find(const char* name) const; // null when unknown; names match exactly
};
