// The plug-in's settings and their preference panel.
#pragma once

#include "settings/PluginSettings.h"

#include <string>

class BTextControl;
class PluginInterface;

// Defaults of the texts below.
extern const char* kIgnoreStringsDefault;
extern const char* kScanSystemDirectoriesDefault;
extern const char* kLocalTagSubdirectoriesDefault;
extern const char* kIndexSuffixesDefault;

// One object for the plug-in's life. Document thread only; the texts are valid until the setting changes.
class DeclarationSettings : public PluginSettings {
public:
    static DeclarationSettings* Instance(); // made on the first call

    // Deletes the object if there is one. Do not call Instance() afterwards.
    static void DeleteInstance();

    bool OptionClickToFindDecl() const { return optionClickToFindDeclaration.Value(); }
    bool CtrlOptionClickToFindDef() const { return ctrlOptionClickToFindDefinition.Value(); }
    bool AutoRebuild() const { return automaticallyRebuild.Value(); }   // update stale tags after a lookup
    bool AutoComplete() const { return autoComplete.Value(); }          // complete while typing
    const char* IgnoreStrings() const { return ignoreStrings.Value(); } // macros that the tags program ignores: "A,B"
    const char* ScanSystemDirectories() const { return scanSystemDirectories.Value(); } // for system tags: "/a /b"
    const char* LocalTagSubdirs() const { return localTagSubdirectories.Value(); }      // ".:./build"
    const char* IndexSuffixes() const { return indexSuffixes.Value(); }                 // of files to tag: "*.h *.c"

    // The directories as in the panel, one a line; valid until the next call.
    const char* ScanSystemDirectoriesForEditItem() const;

    // Adds controls, bound to the settings, to the container of the panel that the host has opened. Each call makes new
    // controls.
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
