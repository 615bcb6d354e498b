// All settings of a plug-in, as the host deals with them.
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

    // Tells the host every name, in the order of registration.
    virtual void Register(PluginInterface* host);

    // Applies one stored line, split into words: the name, the value's words, null. False, and nothing changes, when
    // the name is unknown or the value malformed.
    virtual bool HandleSettingsCommand(PluginInterface* host, const char*** args);

    // Writes a line for every setting that differs from its default, and none for the others.
    virtual void Save(PluginInterface* host);

    // The text form of one setting; false, and 'value' is left alone, when the name is unknown.
    virtual bool ReturnSettingValue(PluginInterface* host, const char* name, std::string& value) const;

protected:
    std::vector<PluginSettingBase*> settings; // borrowed

private:
    PluginSettingBase* Find(const char* name) const; // null when unknown; names match exactly
};
