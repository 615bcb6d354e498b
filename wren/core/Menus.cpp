#include "wren/core/Menus.h"

#include "vetch/app/BApplication.h"
#include "vetch/interface/BMenu.h"
#include "vetch/interface/BMenuBar.h"
#include "vetch/interface/BMenuItem.h"

namespace wren {

Menus::Menus() : bar(std::make_unique<BMenuBar>("Menu bar")), search(new BMenu("Search"))
{
    bar->AddItem(new BMenuItem(search));
    be_app->SetMenuBar(bar.get());
}

Menus::~Menus()
{
    be_app->SetMenuBar(nullptr);
}

BMenuItem* Menus::AddItem(BMenu* menu, long index, const std::string& label, const std::string& command, char key,
                          uint32 modifiers)
{
    if (menu == nullptr)
        return nullptr;
    auto* item = new BMenuItem(label.c_str(), nullptr, key, modifiers);
    menu->AddItem(item, index);
    commands[item] = command;
    return item;
}

std::string Menus::CommandOf(const BMenuItem* item) const
{
    const auto found = commands.find(item);
    return found == commands.end() ? "" : found->second;
}

} // namespace wren
