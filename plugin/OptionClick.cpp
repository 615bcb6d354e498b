#include "plugin/OptionClick.h"

#include "completion/CompletionCommands.h"
#include "plugin/Activation.h"
#include "plugin/LookupCommands.h"
#include "plugin/PluginInterface.h"
#include "settings/DeclarationSettings.h"
#include "vetch/app/Modifiers.h"
#include "vetch/interface/BWindow.h"

#include <optional>

namespace {

const uint32 kFirstButtonAlone = 1; // with another button it is a gesture of the host
const uint32 kWatchedModifiers = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;
const uint32 kDeclarationModifiers = B_OPTION_KEY;
const uint32 kDefinitionModifiers = B_CONTROL_KEY | B_OPTION_KEY;

// The modifiers must match exactly: with another key held, the click belongs to the host. It also does when the setting
// for its keys is off; the other kind of lookup does not take its place.
std::optional<LookupType> AskedFor()
{
    const DeclarationSettings& settings = *DeclarationSettings::Instance();
    const uint32 held = modifiers() & kWatchedModifiers;
    if (held == kDeclarationModifiers && settings.OptionClickToFindDecl())
        return kLookUpDeclarations;
    if (held == kDefinitionModifiers && settings.CtrlOptionClickToFindDef())
        return kLookUpDefinitions;
    return std::nullopt;
}

bool IsMeantForText(PluginInterface* host, BPoint where, uint32 buttons)
{
    return buttons == kFirstButtonAlone && host->window != nullptr && host->window->IsActive() &&
           !WasJustActivated(host->window) && host->TextBounds().Contains(where);
}

} // namespace

bool LookUpClickedWord(PluginInterface* host)
{
    CloseAnyPalettes(); // for any click: the user has turned to the text
    BPoint where;
    uint32 buttons = 0;
    host->GetMouse(&where, &buttons, true);
    if (!IsMeantForText(host, where, buttons))
        return false;
    const std::optional<LookupType> type = AskedFor();
    if (!type)
        return false;
    SymbolLookupAt(host, host->OffsetAt(&where), *type);
    host->CommandDone(0);
    return true;
}
