#include "plugin/KeyEvents.h"

#include "completion/CompletionCommands.h"
#include "completion/CompletionWindow.h"
#include "plugin/Activation.h"
#include "plugin/PluginInterface.h"
#include "scan/SelectionScanner.h"
#include "scan/WordScan.h"
#include "settings/DeclarationSettings.h"
#include "windows/SearchWindow.h"

long gPreKeyDownSelStart = 0;
long gPreKeyDownPatternStart = 0;
long gPreKeyDownPatternSize = 0;
bool gHandlingAutoCompletePrimitive = false;

namespace {

scan::TypedWord TypedBeforeCaret(PluginInterface* host)
{
    scan::TypedWord typed;
    IsPatternBeforeSelection(host, typed.caret, typed.start, typed.length);
    return typed;
}

scan::TypedWord TypedBeforeKey()
{
    return {gPreKeyDownSelStart, gPreKeyDownPatternStart, gPreKeyDownPatternSize};
}

bool CompletesWhileTyping()
{
    return DeclarationSettings::Instance()->AutoComplete();
}

} // namespace

long KeyDown(PluginInterface* host)
{
    ClearActivation();
    const scan::TypedWord before = CompletesWhileTyping() ? TypedBeforeCaret(host) : scan::TypedWord();
    gPreKeyDownSelStart = before.caret;
    gPreKeyDownPatternStart = before.start;
    gPreKeyDownPatternSize = before.length;

    if (const long routed = gCompletionActions.routeKey(host, host->message))
        return routed;
    // Any key closes the lookup results. Completions stay: after the key is applied they are compared with the text.
    if (SearchWindow* results = SearchWindow::gSearchWin)
        results->Quit();
    return 0;
}

long KeyTyped(PluginInterface* host)
{
    // Runs first, even if this key is skipped because more keys wait.
    ClearActivation();
    gHandlingAutoCompletePrimitive = false;
    if (host->InputPending() || !CompletesWhileTyping())
        return 0;

    // The first letter of an identifier counts wherever it starts; later ones count only in the same identifier.
    // Without an identifier all values are 0, which is not a step forward.
    if (WordBeganOrGrew(TypedBeforeKey(), TypedBeforeCaret(host)))
        gCompletionActions.autoSuggest(host);
    else
        CloseAnyPalettes();
    return 0;
}

long EditingPrimitiveDone(PluginInterface* host)
{
    // The mark covers one edit and is cleared in any case. Without completion while typing nothing was recorded at key
    // down, so the list stays open.
    const bool ownEdit = gHandlingAutoCompletePrimitive;
    gHandlingAutoCompletePrimitive = false;
    if (ownEdit || !CompletesWhileTyping())
        return 0;
    if (!WordGrew(TypedBeforeKey(), TypedBeforeCaret(host)))
        CloseAnyPalettes();
    return 0;
}
