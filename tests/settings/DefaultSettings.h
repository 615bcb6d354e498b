// The plug-in's settings at their defaults, for as long as a test.
#pragma once

#include "settings/DeclarationSettings.h"
#include "tests/support/FakeHost.h"

class DefaultSettings {
public:
    DefaultSettings() { Restore(); }
    ~DefaultSettings() { Restore(); }

    // As from a stored line; the value is taken as one word.
    static bool Set(const char* name, const char* value)
    {
        FakeHost host;
        const char* words[] = {name, value, nullptr};
        const char** arguments = words;
        return DeclarationSettings::Instance()->HandleSettingsCommand(&host, &arguments);
    }

private:
    static void Restore()
    {
        for (const char* name : {"DeclOptionClickToFindDeclaration", "DeclCtrlOptionClickToFindDefinition",
                                 "DeclAutomaticallyRebuild", "DeclAutoComplete"})
            Set(name, "on");
        Set("DeclIgnoreStrings", kIgnoreStringsDefault);
        Set("DeclScanSystemDirectories", kScanSystemDirectoriesDefault);
        Set("DeclLocalTagSubdirectories", kLocalTagSubdirectoriesDefault);
        Set("DeclIndexSuffixes", kIndexSuffixesDefault);
    }
};
