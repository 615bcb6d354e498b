#include "settings/PluginSettings.h"

#include "plugin/PluginInterface.h"

#include <algorithm>
#include <cstring>

void PluginSettings::Register(PluginInterface* host)
{
    for (const PluginSettingBase* setting : settings)
        setting->RegisterSelf(host);
}

bool PluginSettings::HandleSettingsCommand(PluginInterface*, const char*** args)
{
    PluginSettingBase* setting = Find((*args)[0]);
    return setting != nullptr && setting->HandleSettingsCommand(*args);
}

void PluginSettings::Save(PluginInterface* host)
{
    // A setting at its default leaves no line, so a later version's better default takes effect.
    for (const PluginSettingBase* setting : settings)
        if (!setting->MatchesDefault())
            host->WriteSettings("%s %s\n", setting->Name(), setting->ReturnSettingValue().c_str());
}

bool PluginSettings::ReturnSettingValue(PluginInterface*, const char* name, std::string& value) const
{
    const PluginSettingBase* setting = Find(name);
    if (setting == nullptr)
        return false;
    value = setting->ReturnSettingValue();
    return true;
}

PluginSettingBase* PluginSettings::Find(const char* name) const
{
    const auto hasName = [name](const PluginSettingBase* setting) { return std::strcmp(setting->Name(), name) == 0; };
    const auto found = std::find_if(settings.begin(), settings.end(), hasName);
    return found == settings.end() ? nullptr : *found;
}
