#include "wren/cli/LookupFace.h"

#include <utility>

namespace wren {

void LookupDisplay::Apply(vetch::Update update)
{
    if (const auto* added = std::get_if<vetch::ListItemAdded>(&update))
        Keep(*added);
    HeadlessDisplay::Apply(std::move(update));
}

void LookupDisplay::Keep(const vetch::ListItemAdded& added)
{
    const std::lock_guard guard(itemsMutex);
    if (added.list != lastList)
        items.clear();
    lastList = added.list;
    items.push_back(added.text);
}

std::vector<std::string> LookupDisplay::LastItems() const
{
    const std::lock_guard guard(itemsMutex);
    return items;
}

} // namespace wren
