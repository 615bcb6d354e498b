#include "plugin/SearchMenu.h"

#include "plugin/PluginInterface.h"
#include "vetch/app/Modifiers.h"
#include "vetch/interface/BMenuBar.h"
#include "vetch/interface/BMenuItem.h"
#include "vetch/interface/BWindow.h"

namespace {

const char* const kLookUpDeclarationLabel = "Look up declaration";
const char* const kLookUpDefinitionLabel = "Look up definition";

struct Item {
    const char* label;
    const char* command;
    uint32 modifiers; // without a key: they place the item in its dynamic group
    void (BMenuItem::*markDynamic)();
};

const Item kItems[] = {
    {kLookUpDeclarationLabel, "DeclarationLookup", B_SHIFT_KEY | B_COMMAND_KEY, &BMenuItem::SetStartDynamic},
    {kLookUpDefinitionLabel, "DefinitionLookup", B_OPTION_KEY | B_COMMAND_KEY, &BMenuItem::SetDynamic},
    {"Look up...", "SymbolLookupDialog", B_OPTION_KEY | B_COMMAND_KEY | B_SHIFT_KEY, &BMenuItem::SetDynamic},
};

BMenu* SearchMenu()
{
    BMenuBar* bar = be_app->MenuBar();
    BMenuItem* search = bar == nullptr ? nullptr : bar->FindItem("Search");
    return search == nullptr ? nullptr : search->Submenu();
}

} // namespace

long MenuBarBuilt(PluginInterface* host)
{
    BMenu* menu = SearchMenu();
    if (menu == nullptr)
        return 0;
    menu->AddSeparatorItem();
    for (const Item& item : kItems) {
        BMenuItem* added = host->AddMenuItem(menu, menu->CountItems(), item.label, item.command, 0, item.modifiers);
        if (added != nullptr)
            (added->*item.markDynamic)();
    }
    return 0;
}

long MenusAboutToShow(PluginInterface* host)
{
    BMenu* menu = SearchMenu();
    if (menu == nullptr)
        return 0;
    // "Look up..." is unchanged: its dialog is useful without a document too.
    const bool enabled = host->window != nullptr && !host->window->IsShowingSheet() && host->documentID != 0;
    for (const char* label : {kLookUpDeclarationLabel, kLookUpDefinitionLabel})
        if (BMenuItem* item = menu->FindItem(label))
            item->SetEnabled(enabled);
    return 0;
}
