#include "plugin/EventTable.h"

#include "completion/CompletionCommands.h"
#include "generate/CreateTags.h"
#include "plugin/Activation.h"
#include "plugin/ButtonMenu.h"
#include "plugin/Commands.h"
#include "plugin/KeyEvents.h"
#include "plugin/LookupCommands.h"
#include "plugin/OptionClick.h"
#include "plugin/PluginInterface.h"
#include "plugin/SearchMenu.h"
#include "plugin/SymbolFiles.h"
#include "settings/BundleIdentifier.h"
#include "settings/DeclarationSettings.h"
#include "vetch/app/Modifiers.h"

#include <cstring>
#include <string>

namespace {

// A handler's result; see PluginMain.
enum Result : long { kNotHandled, kHandled, kInputConsumed };

// The host requires these numbers; the plug-in does not use them.
const long kInitReplyA = 16;
const long kInitReplyB = 3;
const long kPluginFlags = 0x638;
const long kFirstResourceID = 14000;
const long kSecondResourceID = 14001;

long FirstContact(PluginInterface* host)
{
    host->initReplyA = kInitReplyA;
    host->initReplyB = kInitReplyB;
    return kHandled;
}

long Registration(PluginInterface* host)
{
    RegisterCommands(host);
    host->SetPluginFlags(kPluginFlags);
    DeclarationSettings::Instance()->Register(host);
    return kHandled;
}

long Unload(PluginInterface*)
{
    DeclarationSettings::DeleteInstance(); // the last event
    return kNotHandled;
}

long ButtonClicked(PluginInterface* host)
{
    ClearActivation();
    CloseAnyPalettes();
    SelectionSymbolLookup(host, (modifiers() & B_OPTION_KEY) != 0, kLookUpAny);
    return kHandled;
}

long ButtonMenuAsked(PluginInterface* host)
{
    ClearActivation();
    CloseAnyPalettes();
    RunButtonMenu(host);
    return kHandled; // also when dismissed: the menu was shown
}

long NamedCommand(PluginInterface* host)
{
    CloseAnyPalettes();
    RunCommand(host, host->name); // an unknown name does nothing and counts as handled
    host->CommandDone(0);
    return kHandled;
}

long SettingsCommand(PluginInterface* host)
{
    if (host->settingsArgs == nullptr || *host->settingsArgs == nullptr || **host->settingsArgs == nullptr)
        return kNotHandled;
    return DeclarationSettings::Instance()->HandleSettingsCommand(host, host->settingsArgs) ? kHandled : kNotHandled;
}

// Only a chosen completion counts as the user's input to the document. For a directory from a panel, or a key that a
// list did not want, the plug-in acts and the host continues.
long DocumentMessage(PluginInterface* host)
{
    if (host->message == nullptr)
        return kNotHandled;
    switch (host->message->what) {
    case FourCC("gnlt"):
        gTagsActions.directorySelected(host, host->message);
        return kNotHandled;
    case FourCC("ksel"):
        gCompletionActions.selected(host, host->message);
        return kInputConsumed;
    case B_KEY_DOWN:
        CloseAnyPalettes();
        return kNotHandled;
    default:
        return kNotHandled;
    }
}

long MouseDown(PluginInterface* host)
{
    const bool lookedUp = LookUpClickedWord(host);
    // In any case: a refused click was the activating one, and the next click counts.
    ClearActivation();
    return lookedUp ? kInputConsumed : kNotHandled;
}

// Keeps the activation: a window that was activated just now still was.
long DocumentChanged(PluginInterface*)
{
    CloseAnyPalettes();
    return kNotHandled;
}

long WindowActivated(PluginInterface* host)
{
    NoteActivation(host->window);
    return kNotHandled;
}

long ClearAndClose(PluginInterface*)
{
    ClearActivation();
    CloseAnyPalettes();
    return kHandled;
}

long ResourceIDsAsked(PluginInterface* host)
{
    host->SetResourceIDs(kFirstResourceID, kSecondResourceID);
    return kHandled;
}

long SaveSettings(PluginInterface* host)
{
    DeclarationSettings::Instance()->Save(host);
    return kNotHandled;
}

long SettingAsked(PluginInterface* host)
{
    std::string value;
    if (host->name == nullptr || !DeclarationSettings::Instance()->ReturnSettingValue(host, host->name, value))
        return kNotHandled; // the result is unchanged: another plug-in may have set it
    host->ReturnSettingNameValue(value.c_str());
    return kHandled;
}

long PanelsOffered(PluginInterface* host)
{
    host->RegisterPreferencePanel(kBundleIdentifier, "Symbols", "Declaration.icns");
    return kNotHandled;
}

long PanelOpened(PluginInterface* host)
{
    if (host->panelIdentifier != nullptr && std::strcmp(host->panelIdentifier, kBundleIdentifier) == 0)
        DeclarationSettings::Instance()->AddPreferencePanel(host);
    return kNotHandled;
}

long SymbolFilesAsked(PluginInterface* host)
{
    return AddFilesOfSymbol(host) ? kInputConsumed : kNotHandled;
}

struct Row {
    long event;
    long (*handle)(PluginInterface* host);
};

const Row kEvents[] = {
    {1, FirstContact},
    {2, Registration},
    {3, Unload},
    {5, MenuBarBuilt},
    {6, MenusAboutToShow},
    {100, ButtonClicked},
    {101, ButtonMenuAsked},
    {103, NamedCommand},
    {104, SettingsCommand},
    {202, DocumentMessage},
    {203, MouseDown},
    {206, KeyDown},
    {207, KeyTyped},
    {208, EditingPrimitiveDone},
    {209, DocumentChanged}, // not by this plug-in
    {300, WindowActivated},
    {301, ClearAndClose}, // the window is deactivated
    {307, ResourceIDsAsked},
    {308, ClearAndClose},
    {309, DocumentChanged},
    {400, SaveSettings},
    {402, SettingAsked},
    {500, PanelsOffered},
    {502, PanelOpened},
    {10010, SymbolFilesAsked},
};

} // namespace

long HandleEvent(long event, PluginInterface* host)
{
    for (const Row& row : kEvents)
        if (row.event == event)
            return row.handle(host);
    return kNotHandled;
}
