// Named, typed settings, which the host stores as lines of text: the name, a blank, the value.
//
// Document thread only, without a lock: the preference panel runs there too.
#pragma once

#include "vetch/support/BNotifier.h"

#include <string>

class BCheckBox;
class BTextControl;
class PluginInterface;

constexpr uint32 kSettingChanged = FourCC("valC"); // sent at every real change, without a message

// One setting. Watchers receive a notice of every change of its value, and no other notices.
class PluginSettingBase : public BNotifier {
public:
    explicit PluginSettingBase(const char* name) : name(name) {} // borrowed: a string constant

    const char* Name() const { return name; }
    void RegisterSelf(PluginInterface* host) const;

    // Sets the value from its text form; false, without a change, for any other text.
    virtual bool SetToStringValue(const char* text) = 0;
    virtual std::string StringValue() const = 0;

    // Sets the value from a stored line, split at its blanks: the name, the words of the value, null. False, without a
    // change, when the value is missing or invalid.
    virtual bool HandleSettingsCommand(const char** argv) = 0;
    virtual std::string ReturnSettingValue() const = 0; // the text form
    virtual bool MatchesDefault() const = 0;

private:
    const char* name;
};

template <class T>
class PluginSetting;

// A switch; its text form is exactly "on" or "off".
template <>
class PluginSetting<bool> : public PluginSettingBase {
public:
    PluginSetting(const char* name, bool defaultValue);

    bool Value() const { return value; }
    void SetValue(bool newValue);

    bool SetToStringValue(const char* text) override;
    std::string StringValue() const override { return ReturnSettingValue(); }
    bool HandleSettingsCommand(const char** argv) override; // words after the first are ignored
    std::string ReturnSettingValue() const override;
    bool MatchesDefault() const override { return value == defaultValue; }

private:
    bool value;
    const bool defaultValue;
};

// A text; its text form is itself. The host keeps only its words: runs of blanks come back as one blank, and an empty
// text does not come back.
template <>
class PluginSetting<const char*> : public PluginSettingBase {
public:
    PluginSetting(const char* name, const char* defaultValue);

    const char* Value() const { return value.c_str(); } // valid until the setting changes
    void SetValue(const char* newValue);

    bool SetToStringValue(const char* text) override; // always true
    std::string StringValue() const override { return ReturnSettingValue(); }
    bool HandleSettingsCommand(const char** argv) override; // joins the words with one blank
    std::string ReturnSettingValue() const override { return value; }
    bool MatchesDefault() const override { return value == defaultValue; }

private:
    std::string value;
    const std::string defaultValue;
};

// Binds a control to a setting, both ways: it shows the value, follows its changes, and sets it when the user changes
// the control. The setting outlives the user's access to the control; the control may die at any time.
void Bind(PluginSetting<bool>* setting, BCheckBox* box);
void Bind(PluginSetting<const char*>* setting, BTextControl* control);
