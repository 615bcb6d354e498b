#include "settings/DeclarationSettings.h"

// Holds one of the deprecation macros only. Another macro behind a declaration may be tagged instead of it, until the
// user adds the macro in the panel.
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
    // The order in the host's list and in settings files: it keeps lines in place on each save.
    settings = {
        &optionClickToFindDeclaration,
        &ctrlOptionClickToFindDefinition,
        &automaticallyRebuild,
        &autoComplete,
        &ignoreStrings,
        &scanSystemDirectories,
        &localTagSubdirectories, // no control and no reader; it is stored for users who have it in their settings
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
    // The slot keeps the dead pointer: the host unloads once, last. A second object would have no owner to delete it.
    delete Slot();
}
