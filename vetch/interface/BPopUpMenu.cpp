#include "vetch/interface/BPopUpMenu.h"

#include "vetch/display/Display.h"
#include "vetch/support/HeldLocks.h"

#include <cassert>

BPopUpMenu::BPopUpMenu(const char* name, bool /*radioMode*/, bool /*labelFromMarked*/) : BMenu(name) {}

BMenuItem* BPopUpMenu::Go(BPoint where, bool /*sendsMessage*/, bool /*keepsOpen*/, bool /*asynchronous*/)
{
    assert(vetch::HeldLocks() == 0); // a thread that waits for the lock would wait for the user
    vetch::MenuDescription description;
    description.name = Name();
    description.where = where;
    description.fontSize = Font().Size();
    for (long i = 0; i < CountItems(); ++i) {
        const BMenuItem* item = ItemAt(i);
        description.rows.push_back({item->Label(), item->IsEnabled(), item->Shortcut(), item->ShortcutModifiers()});
    }
    const std::optional<long> row = vetch::CurrentDisplay()->RunMenu(description);
    return row ? ItemAt(*row) : nullptr;
}
