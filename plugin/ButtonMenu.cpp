#include "plugin/ButtonMenu.h"

#include "completion/CompletionCommands.h"
#include "generate/CreateTags.h"
#include "plugin/LookupCommands.h"
#include "plugin/PluginInterface.h"
#include "scan/SelectionScanner.h"
#include "vetch/interface/BMenuItem.h"
#include "vetch/interface/BPopUpMenu.h"
#include "vetch/interface/BWindow.h"

#include <iterator>
#include <string>

namespace {

const float kMenuFontSize = 10;
const float kBelowButton = 6;

struct Item {
    const char* label;
    const char* command; // its bound key is shown; null for none
    bool needsWord;
    void (*run)(PluginInterface* host);
};

const Item kItems[] = {
    {"Look up symbol", "SymbolLookup", true,
     [](PluginInterface* host) { SelectionSymbolLookup(host, false, kLookUpAny); }},
    {"Look up declaration", "DeclarationLookup", false,
     [](PluginInterface* host) { SelectionSymbolLookup(host, false, kLookUpDeclarations); }},
    {"Look up definition", "DefinitionLookup", false,
     [](PluginInterface* host) { SelectionSymbolLookup(host, false, kLookUpDefinitions); }},
    {"Look up...", "SymbolLookupDialog", false,
     [](PluginInterface* host) { SelectionSymbolLookup(host, true, kLookUpAny); }},
    // Not commands, so without keys. The third item makes only the system's tags; the fourth pastes the lines for both
    // files, from which the user picks.
    {"Create local tags...", nullptr, false, [](PluginInterface* host) { gTagsActions.createLocal(host); }},
    {"Update local tags", nullptr, false, [](PluginInterface* host) { gTagsActions.createOrUpdateLocal(host); }},
    {"Create or update system tags", nullptr, false,
     [](PluginInterface* host) { gTagsActions.create(host, true, false); }},
    {"Help create tags in Worksheet", nullptr, false,
     [](PluginInterface* host) { gTagsActions.helpCreate(host, true, true); }},
    // This completion runs without the mark of the named command: its list closes at the next editing key.
    {"Complete symbol", "SymbolCompletion", true, [](PluginInterface* host) { gCompletionActions.suggest(host); }},
};

// True when an identifier touches the end of the selection. The start does not matter: a selection may span words.
bool HasWord(PluginInterface* host)
{
    long start = 0;
    long end = 0;
    host->GetSelection(&start, &end);
    std::string word;
    return ScanForWord(host, end, end, word);
}

void AddItems(PluginInterface* host, BMenu& menu)
{
    const bool hasWord = HasWord(host);
    for (const Item& item : kItems) {
        auto* row = new BMenuItem(item.label, nullptr);
        if (item.command != nullptr)
            SetModifiersIfDefined(host, row, item.command);
        if (item.needsWord)
            row->SetEnabled(hasWord);
        menu.AddItem(row);
    }
}

BPoint MenuPlace(PluginInterface* host)
{
    const BRect button = host->ButtonFrame();
    BPoint place = {button.left, button.bottom};
    if (host->window != nullptr)
        place = host->window->ConvertToScreen(place);
    place.y += kBelowButton;
    return place;
}

} // namespace

void RunButtonMenu(PluginInterface* host)
{
    BPopUpMenu menu("declarationPopUp", false, false);
    BFont font = *be_plain_font;
    font.SetSize(kMenuFontSize);
    menu.SetFont(&font);
    AddItems(host, menu);

    BMenuItem* chosen = menu.Go(MenuPlace(host), false, false, false);
    if (chosen == nullptr)
        return;
    const long index = menu.IndexOf(chosen);
    if (index >= 0 && index < static_cast<long>(std::size(kItems)))
        kItems[index].run(host);
}

void SetModifiersIfDefined(PluginInterface* host, BMenuItem* item, const char* command)
{
    char key = 0;
    uint32 bits = 0;
    host->GetCommandShortcut(command, &key, &bits);
    if (key != 0)
        item->SetShortcut(key, bits);
}
