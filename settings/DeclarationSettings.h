// The plug-in's own settings, and the panel that edits them.
#pragma once

#include "settings/PluginSettings.h"

#include <string>

class BTextControl;
class PluginInterface;

// What the texts below are until the user changes them.
extern const char* kIgnoreStringsDefault;
extern const char* kScanSystemDirectoriesDefault;
extern const char* kLocalTagSubdirectoriesDefault;
extern const char* kIndexSuffixesDefault;

// One object for the plug-in's life. Document thread only; the texts are valid until the setting next changes.
class DeclarationSettings : public PluginSettings {
public:
    static DeclarationSettings* Instance(); // made on the first call

    // Deletes the object if there is one. It is not made again: Instance() is not to be called any more.
    static void DeleteInstance();

    bool OptionClickToFindDecl() const { return optionClickToFindDeclaration.Value(); }
    bool CtrlOptionClickToFindDef() const { return ctrlOptionClickToFindDefinition.Value(); }
    bool AutoRebuild() const { return automaticallyRebuild.Value(); }   // update stale tags after a lookup
    bool AutoComplete() const { return autoComplete.Value(); }          // complete while typing
    const char* IgnoreStrings() const { return ignoreStrings.Value(); } // macros that the tags program ignores: "A,B"
    const char* ScanSystemDirectories() const { return scanSystemDirectories.Value(); } // for system tags: "/a /b"
    const char* LocalTagSubdirs() const { return localTagSubdirectories.Value(); }      // ".:./build"
    const char* IndexSuffixes() const { return indexSuffixes.Value(); }                 // of files to tag: "*.h *.c"

    // The directories as the panel shows them, one a line; valid until the next call.
    const char* ScanSystemDirectoriesForEditItem() const;

    // Puts live controls into the container of the panel that the host has opened, and ties them to the settings. May
    // be called any number of times: each panel gets controls of its own.
    void AddPreferencePanel(PluginInterface* host);

private:
    friend class ScanDirectoriesBinder;

    DeclarationSettings();
    static DeclarationSettings*& Slot();
    void BindScanDirectories(BTextControl* control);

    PluginSetting<bool> optionClickToFindDeclaration;
    PluginSetting<bool> ctrlOptionClickToFindDefinition;
    PluginSetting<bool> automaticallyRebuild;
    PluginSetting<bool> autoComplete;
    PluginSetting<const char*> ignoreStrings;
    PluginSetting<const char*> scanSystemDirectories;
    PluginSetting<const char*> localTagSubdirectories;
    PluginSetting<const char*> indexSuffixes;
    mutable std::string editItem;
};
