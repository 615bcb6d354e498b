#include "settings/DeclarationSettings.h"

// Of the macros for deprecation only one is here. Another one that stands behind a declaration may be tagged in its
// place, until the user adds it in the panel.
const char* kIgnoreStringsDefault = "AVAILABLE_MAC_OS_X_VERSION_10_0_AND_LATER,"
                                    "AVAILABLE_MAC_OS_X_VERSION_10_1_AND_LATER,"
                                    "AVAILABLE_MAC_OS_X_VERSION_10_2_AND_LATER,"
                                    "AVAILABLE_MAC_OS_X_VERSION_10_3_AND_LATER,"
                                    "AVAILABLE_MAC_OS_X_VERSION_10_4_AND_LATER,"
                                    "AVAILABLE_MAC_OS_X_VERSION_10_0_AND_LATER_BUT_DEPRECATED_IN_MAC_OS_X_VERSION_10_4";
const char* kScanSystemDirectoriesDefault = "/System/Library/Frameworks /usr/include";
const char* kLocalTagSubdirectoriesDefault = ".:./build";
const char* kIndexSuffixesDefault = "*.h *.c *.cp *.cpp *.m *.mm";

DeclarationSettings::DeclarationSettings()
    : optionClickToFindDeclaration("DeclOptionClickToFindDeclaration", true),
      ctrlOptionClickToFindDefinition("DeclCtrlOptionClickToFindDefinition", true),
      automaticallyRebuild("DeclAutomaticallyRebuild", true), autoComplete("DeclAutoComplete", true),
      ignoreStrings("DeclIgnoreStrings", kIgnoreStringsDefault),
      scanSystemDirectories("DeclScanSystemDirectories", kScanSystemDirectoriesDefault),
      localTagSubdirectories("DeclLocalTagSubdirectories", kLocalTagSubdirectoriesDefault),
      indexSuffixes("DeclIndexSuffixes", kIndexSuffixesDefault)
{
    // In this order the host lists them and settings files hold them, so that saving again changes no line's place.
    settings = {
        &optionClickToFindDeclaration,
        &ctrlOptionClickToFindDefinition,
        &automaticallyRebuild,
        &autoComplete,
        &ignoreStrings,
        &scanSystemDirectories,
        &localTagSubdirectories, // no control and no reader: it is stored for users who have it in their settings
        &indexSuffixes};
}

DeclarationSettings*& DeclarationSettings::Slot()
{
    static DeclarationSettings* instance = nullptr;
    return instance;
}

DeclarationSettings* DeclarationSettings::Instance()
{
    DeclarationSettings*& instance = Slot();
    if (instance == nullptr)
        instance = new DeclarationSettings;
    return instance;
}

void DeclarationSettings::DeleteInstance()
{
    // The slot keeps the dead pointer: the host unloads once and last, and a plug-in that is going away makes no second
    // object, which nobody would delete.
    delete Slot();
}
