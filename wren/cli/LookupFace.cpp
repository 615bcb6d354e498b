#include "wren/cli/LookupFace.h"

namespace wren {

void LookupDisplay::ListItemAdded(vetch::HandlerToken list, long index, const std::string& text)
{
    {
        const std::lock_guard guard(itemsMutex);
        if (list != lastList)
            items.clear();
        lastList = list;
        items.push_back(text);
    }
    HeadlessDisplay::ListItemAdded(list, index, text);
}

std::vector<std::string> LookupDisplay::LastItems() const
{
    const std::lock_guard guard(itemsMutex);
    return items;
}

} // namespace wren
