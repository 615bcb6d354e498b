#include "settings/PluginSetting.h"

#include "plugin/PluginInterface.h"

#include <cstring>

void PluginSettingBase::RegisterSelf(PluginInterface* host) const
{
    host->RegisterSetting(name);
}

PluginSetting<bool>::PluginSetting(const char* name, bool defaultValue)
    : PluginSettingBase(name), value(defaultValue), defaultValue(defaultValue)
{
}

void PluginSetting<bool>::SetValue(bool newValue)
{
    if (newValue == value)
        return;
    value = newValue;
    SendNotices(kSettingChanged);
}

bool PluginSetting<bool>::SetToStringValue(const char* text)
{
    // Exactly the two words that are written; any other, such as "On" or "1", is refused.
    const bool isOn = std::strcmp(text, "on") == 0;
    if (!isOn && std::strcmp(text, "off") != 0)
        return false;
    SetValue(isOn);
    return true;
}

bool PluginSetting<bool>::HandleSettingsCommand(const char** argv)
{
    return argv[1] != nullptr && SetToStringValue(argv[1]);
}

std::string PluginSetting<bool>::ReturnSettingValue() const
{
    return value ? "on" : "off";
}

PluginSetting<const char*>::PluginSetting(const char* name, const char* defaultValue)
    : PluginSettingBase(name), value(defaultValue), defaultValue(defaultValue)
{
}

void PluginSetting<const char*>::SetValue(const char* newValue)
{
    if (value == newValue)
        return;
    value = newValue;
    SendNotices(kSettingChanged);
}

bool PluginSetting<const char*>::SetToStringValue(const char* text)
{
    SetValue(text);
    return true;
}

bool PluginSetting<const char*>::HandleSettingsCommand(const char** argv)
{
    // The host drops an empty value when it splits the line, so "name" alone cannot mean an empty text. It is refused,
    // as any line without a value, and the default comes back.
    if (argv[1] == nullptr)
        return false;
    std::string joined = argv[1];
    for (const char** word = argv + 2; *word != nullptr; ++word)
        joined.append(" ").append(*word);
    SetValue(joined.c_str());
    return true;
}
