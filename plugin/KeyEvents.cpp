#include "plugin/KeyEvents.h"

#include "completion/CompletionCommands.h"
#include "completion/CompletionWindow.h"
#include "completion/Palettes.h"
#include "plugin/Activation.h"
#include "plugin/PluginInterface.h"
#include "scan/SelectionScanner.h"
#include "settings/DeclarationSettings.h"
#include "windows/SearchWindow.h"

long gPreKeyDownSelStart = 0;
long gPreKeyDownPatternStart = 0;
long gPreKeyDownPatternSize = 0;
bool gHandlingAutoCompletePrimitive = false;

namespace {

// The identifier before the caret; all 0 when there is none.
struct Typed {
    long caret = 0;
    long start = 0;
    long size = 0;
};

Typed TypedBeforeCaret(PluginInterface* host)
{
    Typed typed;
    IsPatternBeforeSelection(host, typed.caret, typed.start, typed.size);
    return typed;
}

bool MovedForward(const Typed& now)
{
    return now.caret > gPreKeyDownSelStart;
}

bool SameIdentifierGrew(const Typed& now)
{
    return now.start == gPreKeyDownPatternStart && now.size > gPreKeyDownPatternSize;
}

bool StartedIdentifier(const Typed& now)
{
    return now.size == 1 && gPreKeyDownPatternSize == 0;
}

bool CompletesWhileTyping()
{
    return DeclarationSettings::Instance()->AutoComplete();
}

} // namespace

long KeyDown(PluginInterface* host)
{
    ClearActivation();
    const Typed before = CompletesWhileTyping() ? TypedBeforeCaret(host) : Typed();
    gPreKeyDownSelStart = before.caret;
    gPreKeyDownPatternStart = before.start;
    gPreKeyDownPatternSize = before.size;

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
    const Typed now = TypedBeforeCaret(host);
    if (MovedForward(now) && (StartedIdentifier(now) || SameIdentifierGrew(now)))
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
    const Typed now = TypedBeforeCaret(host);
    if (!MovedForward(now) || !SameIdentifierGrew(now))
        CloseAnyPalettes();
    return 0;
}
